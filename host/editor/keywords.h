// The keywords a prompt accepts, and the shortest forms of them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qrs::host::ed {

class Keywords {
  public:
    Keywords() = default;
    // "Yes No": the letters that are not small ones are the shortest form; "LTYPE,LT": what follows the comma is.
    // "Ja Nein _Yes No": after the underscore come the names by which the program knows them, in the same order.
    explicit Keywords(std::wstring_view list);

    bool empty() const { return words_.empty(); }
    // As they are shown and typed.
    std::vector<std::wstring> names() const;
    // The program's name of the keyword an answer means; empty when it means none. "_" before it asks for those names
    // themselves.
    std::wstring match(std::wstring_view answer) const;

  private:
    struct Word {
        std::wstring text;
        std::size_t shortBegin;
        std::size_t shortLength;
        std::wstring globalText;
    };
    static Word parse(std::wstring_view word);
    static bool means(const Word& word, std::wstring_view answer);

    std::vector<Word> words_;
    std::vector<Word> globals_;
};

}  // namespace qrs::host::ed
