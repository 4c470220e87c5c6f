// Reads the Markdown of the command pages line by line.
#include "console/pagetext.h"

#include <algorithm>
#include <cstddef>

#include "host/platform/codepage.h"
#include "host/platform/text.h"
#include "host/platform/textwidth.h"

namespace qrs::console {

namespace {

using Lines = std::vector<std::wstring>;

constexpr std::size_t kColumns = 78;
constexpr std::wstring_view kFence = L"```";
constexpr std::wstring_view kSectionMark = L"### ";

bool startsWith(std::wstring_view text, std::wstring_view start) {
    return text.substr(0, start.size()) == start;
}

Lines linesOf(std::string_view page) {
    const std::wstring text = platform::fromUtf8(page);
    Lines lines;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find(L'\n', begin), text.size());
        lines.push_back(text.substr(begin, end - begin));
        if (!lines.back().empty() && lines.back().back() == L'\r') lines.back().pop_back();
        begin = end + 1;
    }
    return lines;
}

// Links are left as their texts, code as what it says.
std::wstring withoutMarks(std::wstring_view line) {
    std::wstring text;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const std::size_t middle = line[i] == L'[' ? line.find(L"](", i) : std::wstring_view::npos;
        const std::size_t end = middle == std::wstring_view::npos ? middle : line.find(L')', middle);
        if (line[i] == L'`') continue;
        const bool isLink =
            end != std::wstring_view::npos && line.substr(i, middle - i).find(L'`') == std::wstring_view::npos;
        if (isLink) {
            text += line.substr(i + 1, middle - i - 1);
            i = end;
        } else {
            text += line[i];
        }
    }
    return text;
}

bool isTableLine(std::wstring_view line) {
    return startsWith(line, L"|");
}

// The cells of "| a | b |"; a bar in code parts no cells.
Lines cellsOf(std::wstring_view line) {
    Lines cells;
    std::wstring cell;
    bool isCode = false;
    for (const wchar_t c : line.substr(1)) {
        if (c == L'`') isCode = !isCode;
        if (c == L'|' && !isCode)
            cells.emplace_back(platform::trimmed(std::wstring_view(cell))), cell.clear();
        else
            cell += c;
    }
    return cells;
}

// The title row of a table and the dashes below it say nothing that the rows do not.
bool isTableHead(const Lines& lines, std::size_t at) {
    const auto isRule = [&](std::size_t i) { return i < lines.size() && startsWith(lines[i], L"|--"); };
    return isRule(at) || isRule(at + 1);
}

// Two columns where the first is short, else one below the other.
std::wstring tableRow(const Lines& cells) {
    constexpr std::size_t kFirstColumn = 16;
    std::wstring first = L"  " + withoutMarks(cells.empty() ? std::wstring() : cells.front());
    std::wstring rest;
    for (std::size_t i = 1; i < cells.size(); ++i)
        rest += (i > 1 ? L"; " : L"") + withoutMarks(cells[i]);
    if (platform::columnsOf(first) + 2 <= kFirstColumn)
        return wrapped(platform::paddedTo(first, kFirstColumn) + rest, kColumns, kFirstColumn) + L"\n";
    return wrapped(first, kColumns, 4) + L"\n" + wrapped(L"      " + rest, kColumns, 6) + L"\n";
}

// A line that leads to the page in the other language, and to nothing else.
bool isOnlyLink(std::wstring_view line) {
    return startsWith(line, L"[") && !line.empty() && line.back() == L')' && line.find(L']') == line.rfind(L']');
}

bool isWide(wchar_t c) {
    return c >= 0x1100;
}

// What is printed of lines that are given one after the other.
class Page {
  public:
    // False when no more is wanted.
    bool add(const Lines& lines, std::size_t at) {
        const std::wstring& line = lines[at];
        if (isScript_) return addScript(line);
        if (startsWith(line, kFence)) {
            endParagraph();
            isScript_ = true;
            return true;
        }
        if (line.empty() || line.front() == L'#' || isTableLine(line)) endParagraph();
        if (line.empty()) {
            gap();
        } else if (line.front() == L'#') {
            gap();
            text_ += withoutMarks(line.substr(line.find_first_not_of(L"# "))) + L"\n";
        } else if (isTableLine(line)) {
            if (!isTableHead(lines, at)) text_ += tableRow(cellsOf(line));
        } else if (!isOnlyLink(line)) {
            // Where characters need no blank between them, the line's end is none.
            if (!paragraph_.empty() && !(isWide(paragraph_.back()) && isWide(line.front()))) paragraph_ += L' ';
            paragraph_ += withoutMarks(line);
        }
        return true;
    }

    std::wstring finish() {
        endParagraph();
        while (!text_.empty() && text_.back() == L'\n')
            text_.pop_back();
        return std::move(text_);
    }

  private:
    bool addScript(const std::wstring& line) {
        if (startsWith(line, kFence)) return false;
        // An empty line would not be seen.
        text_ += L"    " + (line.empty() ? L"(Enter)" : line) + L"\n";
        return true;
    }
    void endParagraph() {
        if (!paragraph_.empty()) text_ += wrapped(paragraph_, kColumns, 0) + L"\n";
        paragraph_.clear();
    }
    void gap() {
        const bool hasGap = text_.empty() || (text_.size() > 1 && text_[text_.size() - 2] == L'\n');
        if (!hasGap) text_ += L"\n";
    }

    std::wstring text_, paragraph_;
    bool isScript_ = false;
};

}  // namespace

std::wstring wrapped(std::wstring_view text, std::size_t columns, std::size_t indent) {
    std::wstring lines;
    std::wstring line;
    std::size_t width = 0;
    std::size_t lastBreak = 0;  // in the line; 0: none yet
    for (const wchar_t c : text) {
        const std::size_t wide = platform::columnsOf(std::wstring_view(&c, 1));
        // A mark that ends something may hang over.
        const bool isClosing = std::wstring_view(L"，。、；：！？）”》").find(c) != std::wstring_view::npos;
        if (width + wide > columns && lastBreak > 0 && !isClosing) {
            std::wstring next = line.substr(lastBreak);
            next.erase(0, next.find_first_not_of(L' '));
            line.resize(lastBreak);
            while (!line.empty() && line.back() == L' ')
                line.pop_back();
            lines += line + L"\n";
            line = std::wstring(indent, L' ') + next;
            width = platform::columnsOf(line);
            lastBreak = 0;
        }
        line += c;
        width += wide;
        const bool isIndent = line.find_first_not_of(L' ') == std::wstring::npos;
        const bool isOpening = std::wstring_view(L"（“《").find(c) != std::wstring_view::npos;
        if ((c == L' ' && !isIndent) || (isWide(c) && !isOpening)) lastBreak = line.size();
    }
    return lines + line;
}

std::vector<CommandTask> tasksOf(std::string_view page) {
    std::vector<CommandTask> tasks;
    const Lines lines = linesOf(page);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (startsWith(lines[i], L"## ")) tasks.push_back({withoutMarks(lines[i].substr(3)), {}});
        if (tasks.empty() || !isTableLine(lines[i]) || isTableHead(lines, i)) continue;
        const Lines cells = cellsOf(lines[i]);
        const bool isCommand = cells.size() == 2 && startsWith(cells[0], L"[");
        if (isCommand) tasks.back().commands.push_back({withoutMarks(cells[0]), withoutMarks(cells[1])});
    }
    tasks.erase(std::remove_if(tasks.begin(), tasks.end(), [](const auto& task) { return task.commands.empty(); }),
                tasks.end());
    return tasks;
}

std::wstring shownPage(std::string_view page) {
    const Lines lines = linesOf(page);
    Page shown;
    for (std::size_t i = 0; i < lines.size() && shown.add(lines, i); ++i) {
    }
    return shown.finish();
}

std::wstring shownSection(std::string_view page, std::wstring_view name) {
    const Lines lines = linesOf(page);
    const auto isMeant = [&](std::wstring_view heading) {
        for (heading.remove_prefix(kSectionMark.size()); !heading.empty();) {
            const std::size_t comma = std::min(heading.find(L','), heading.size());
            if (platform::compareNoCase(platform::trimmed(heading.substr(0, comma)), name) == 0) return true;
            heading.remove_prefix(std::min(comma + 1, heading.size()));
        }
        return false;
    };
    std::size_t at = 0;
    while (at < lines.size() && !(startsWith(lines[at], kSectionMark) && isMeant(lines[at])))
        ++at;
    Page shown;
    for (std::size_t i = at; i < lines.size() && (i == at || !startsWith(lines[i], L"#")); ++i)
        if (!shown.add(lines, i)) break;
    return shown.finish();
}

}  // namespace qrs::console
