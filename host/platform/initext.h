// The text of a file of sections, keys and values, kept as it is but for what is set.
//
//     ; a comment
//     [Section]
//     key = value
//
// Comments, blanks, order, spelling, line ends, encoding and lines that are none of these stay. What sections and keys
// mean, and which of them are the same, is the business of those who keep something in such a file.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace qrs::platform {

class IniText {
  public:
    // What tells lines apart, and what a new text is like.
    struct Form {
        std::wstring_view comments;  // a line that begins with one of these says nothing
        std::wstring_view lineEnd;
        std::string_view mark;  // the bytes before the first line
    };
    struct Line {
        std::string raw;  // as bytes, line end included
        bool hasValue = false;
        std::wstring key;  // without the blanks around it
    };
    struct Section {
        std::wstring name;        // without the blanks around it
        std::vector<Line> lines;  // the header first, but in section 0
    };

    explicit IniText(const Form& form) : form_(form), mark_(form.mark), lineEnd_(form.lineEnd) {}

    // Replaces everything. The encoding is UTF-8 or UTF-16 as the mark says; without one UTF-8, or else the ANSI code
    // page. False, with the reason, when the bytes are no text; everything then is without meaning.
    bool parse(std::string_view bytes, std::string& reason);
    // As UTF-8, with or without mark. Bytes that are none stay as they are.
    void parseUtf8(std::string_view bytes);
    std::string bytes() const;

    // In order; 0 is what comes before all of them.
    const std::vector<Section>& sections() const { return sections_; }
    // What a line says, without its line end; of one that has a value the value, without the blanks around it.
    std::wstring contentOf(const Line& line) const;
    std::wstring valueOf(const Line& line) const;

    // Replaces the value of a line that has one. Blanks before it stay.
    void setValue(std::size_t section, std::size_t line, std::wstring_view value);
    // Adds a line after the last one of the section that has a value; the number of the new one. Neither key nor value
    // may hold what would end it.
    std::size_t addValue(std::size_t section, std::wstring_view key, std::wstring_view value);
    // Adds a section at the end, after an empty line; its number.
    std::size_t addSection(std::wstring_view name);

  private:
    std::size_t unitSize() const;
    unsigned unitAt(std::string_view raw, std::size_t at) const;
    std::size_t find(std::string_view raw, char unit, std::size_t from = 0) const;
    std::size_t contentLength(std::string_view raw) const;

    std::wstring decoded(std::string_view raw) const;
    std::string encoded(std::wstring_view text);
    void becomeUtf8();

    void parseLines(std::string_view bytes);
    void parseLine(std::string_view raw);
    void endLastLine(std::vector<Line>& lines);

    Form form_;
    unsigned codePage_ = 65001;
    std::string mark_;
    std::wstring lineEnd_;
    std::vector<Section> sections_ = std::vector<Section>(1);
};

}  // namespace qrs::platform
