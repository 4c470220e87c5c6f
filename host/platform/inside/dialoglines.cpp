// Puts the controls of a dialog into lines, and counts the numbers by which they are answered.
#include "host/platform/inside/dialoglines.h"

#include <algorithm>

#include "host/platform/textwidth.h"

namespace qrs::platform {

namespace {

constexpr std::size_t kNumberWidth = 4;
constexpr const wchar_t* kBetweenColumns = L"  ";

// How many numbers a control takes.
std::size_t partsOf(const Control& control) {
    switch (control.kind) {
        case ControlKind::Group:
        case ControlKind::Label:
            return 0;
        case ControlKind::List:
            return control.listKind == ListKind::None ? 0 : control.rows.size();
        default:
            return 1;
    }
}

// What captions of fields and buttons end in says nothing in a line of text.
std::wstring plainCaption(const std::wstring& caption) {
    const std::size_t last = caption.find_last_not_of(L".:<： ");
    return last == std::wstring::npos ? caption : caption.substr(0, last + 1);
}

// The lines of one dialog, as they come into being.
class Lines {
  public:
    void addPlain(const std::wstring& text) {
        for (std::size_t begin = 0; begin <= text.size();) {
            const std::size_t end = std::min(text.find(L'\n', begin), text.size());
            lines.push_back(text.substr(begin, end - begin));
            begin = end + 1;
        }
    }
    void addNumbered(const std::wstring& text) {
        const std::wstring number = std::to_wstring(++count_);
        lines.push_back(std::wstring(kNumberWidth - std::min(kNumberWidth, number.size()), L' ') + number + L' ' +
                        text);
    }

    std::vector<std::wstring> lines;

  private:
    std::size_t count_ = 0;
};

std::wstring joined(const std::vector<std::wstring>& cells, const std::vector<std::size_t>& widths) {
    std::wstring line;
    for (std::size_t i = 0; i < widths.size(); ++i)
        line += (i == 0 ? L"" : kBetweenColumns) + paddedTo(shownInTable(cells[i]), widths[i]);
    line.erase(line.find_last_not_of(L' ') + 1);
    return line;
}

void addList(Lines& lines, const Control& list) {
    const bool many = list.listKind == ListKind::Many;
    std::vector<std::size_t> widths;
    for (const std::wstring& column : list.columns)
        widths.push_back(columnsOf(column));
    for (const ListRow& row : list.rows)
        for (std::size_t i = 0; i < widths.size(); ++i)
            widths[i] = std::max(widths[i], columnsOf(shownInTable(row.cells[i])));
    if (!list.caption.empty()) lines.addPlain(list.caption);
    const std::wstring beforeNames(list.listKind == ListKind::None ? 2 : kNumberWidth + 5, L' ');
    // A single column needs no heading when the list has a caption.
    if (widths.size() > 1 || list.caption.empty()) lines.addPlain(beforeNames + joined(list.columns, widths));
    for (const ListRow& row : list.rows) {
        const std::wstring text = joined(row.cells, widths);
        if (list.listKind == ListKind::None)
            lines.addPlain(beforeNames + text);
        else if (many)
            lines.addNumbered((row.chosen ? L"[x] " : L"[ ] ") + text);
        else
            lines.addNumbered((row.chosen ? L"(*) " : L"( ) ") + text);
    }
    if (list.rows.empty()) lines.addPlain(beforeNames + L"-");
}

void addControl(Lines& lines, const Control& control) {
    switch (control.kind) {
        case ControlKind::Group:
            if (!control.caption.empty()) lines.addPlain(L"-- " + control.caption);
            break;
        case ControlKind::Label:
            lines.addPlain(control.text.empty() ? control.caption : control.caption + control.text);
            break;
        case ControlKind::CheckBox:
            lines.addNumbered((control.checked ? L"[x] " : L"[ ] ") + control.caption);
            break;
        case ControlKind::List:
            addList(lines, control);
            break;
        case ControlKind::Edit:
        case ControlKind::Combo:
            lines.addNumbered(plainCaption(control.caption) + L" = " + control.text);
            break;
        case ControlKind::Button:
            lines.addNumbered(L"> " + control.caption);
            break;
    }
}

}  // namespace

std::vector<DialogItem> itemsOf(Dialog& dialog) {
    std::vector<DialogItem> items;
    for (Control& control : dialog.controls())
        for (std::size_t part = 0; part < partsOf(control); ++part)
            items.push_back({&control, part});
    return items;
}

std::wstring nameOf(const DialogItem& item) {
    const Control& control = *item.control;
    switch (control.kind) {
        case ControlKind::List: {
            const ListRow& row = control.rows[item.part];
            return row.cells.empty() ? std::wstring() : row.cells.front();
        }
        case ControlKind::Edit:
        case ControlKind::Combo:
        case ControlKind::Button:
            return plainCaption(control.caption);
        default:
            return control.caption;
    }
}

bool isMark(const DialogItem& item) {
    const ControlKind kind = item.control->kind;
    return kind == ControlKind::CheckBox || kind == ControlKind::List;
}

bool isMarked(const DialogItem& item) {
    const Control& control = *item.control;
    switch (control.kind) {
        case ControlKind::CheckBox:
            return control.checked;
        case ControlKind::List:
            return control.rows[item.part].chosen;
        default:
            return false;
    }
}

std::vector<std::wstring> linesOf(Dialog& dialog) {
    Lines lines;
    for (const Control& control : dialog.controls())
        addControl(lines, control);
    return std::move(lines.lines);
}

}  // namespace qrs::platform
