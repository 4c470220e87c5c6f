// Texts of the tree.
#include "standard/text.h"

namespace qrs::standard {

CString fromUtf8(std::string_view bytes) {
    return makeText(platform::fromUtf8(bytes));
}

std::string toUtf8(const CString& text) {
    return platform::toUtf8(view(text));
}

LayerNameList::LayerNameList(const std::vector<CString>& known) {
    for (const CString& name : known)
        isNew(name);
}

bool LayerNameList::isNew(const CString& name) {
    return seen_.insert(platform::foldCase(view(name))).second;
}

void LayerNameList::add(const CString& name) {
    if (isNew(name)) names_.push_back(name);
}

void LayerNameList::appendTo(std::vector<CString>& out) const {
    out.insert(out.end(), names_.begin(), names_.end());
}

CString LayerNameList::joined(const CString& separator) const {
    CString text;
    for (std::size_t i = 0; i < names_.size(); ++i) {
        if (i > 0) text += separator;
        text += names_[i];
    }
    return text;
}

}  // namespace qrs::standard
