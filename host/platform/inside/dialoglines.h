// The text form of a dialog: its lines, and the numbered items in them.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "host/platform/dialog.h"

namespace qrs::platform {

// Something that can be changed: a control, or one row of it.
struct DialogItem {
    Control* control;
    std::size_t part = 0;  // row of a list
};

// In the order of their numbers; the first one bears the number 1.
std::vector<DialogItem> itemsOf(Dialog& dialog);

// What an item is called by. A button's and a field's name is its caption without "..." , ":" and "<" at its end.
std::wstring nameOf(const DialogItem& item);

// Whether the item has a mark that is set or not, and whether it is set.
bool isMark(const DialogItem& item);
bool isMarked(const DialogItem& item);

// The lines of a dialog after its title, without line ends.
std::vector<std::wstring> linesOf(Dialog& dialog);

}  // namespace qrs::platform
