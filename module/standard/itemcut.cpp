// Cuts the text of a large XML file into a small frame and many pieces.
#include "standard/itemcut.h"

#include <algorithm>

namespace qrs::standard {
namespace {

constexpr std::size_t kSectionLevel = 1;
constexpr std::size_t kPieceLevel = 3;
constexpr std::size_t kNowhere = std::string_view::npos;

bool holds(const std::vector<std::string_view>& names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

// Walks from tag to tag.
class Cutter {
  public:
    Cutter(std::string_view text, const CutRule& rule, CutText& out) : text_(text), rule_(rule), out_(out) {}

    bool run() {
        while ((at_ = text_.find('<', at_)) != kNowhere) {
            if (!takeMarkup()) return false;
        }
        out_.frame.append(text_.substr(copied_));
        return level_ == 0;
    }

  private:
    bool startsWith(std::string_view mark) const { return text_.compare(at_, mark.size(), mark) == 0; }

    // Passes over what ends with the mark.
    bool skipTo(std::string_view mark) {
        const std::size_t end = text_.find(mark, at_ + 2);
        if (end == kNowhere) return false;
        at_ = end + mark.size();
        return true;
    }

    bool takeMarkup() {
        // Tags first: there is hardly anything else.
        const char kind = at_ + 1 < text_.size() ? text_[at_ + 1] : '\0';
        if (kind == '/') return takeEnd();
        if (kind == '?') return skipTo("?>");
        if (kind != '!') return takeStart();
        if (startsWith("<!--")) return skipTo("-->");
        return startsWith("<![CDATA[") && skipTo("]]>");
    }

    bool takeEnd() {
        if (level_ == 0 || !skipTo(">")) return false;
        endItem();
        return true;
    }

    bool takeStart() {
        const std::size_t start = at_;
        const std::size_t nameEnd = std::min(text_.find_first_of(" \t\r\n/>", start), text_.size());
        const std::string_view name = text_.substr(start + 1, nameEnd - start - 1);
        char quote = 0;
        for (at_ = nameEnd; at_ < text_.size(); ++at_) {
            const char c = text_[at_];
            if (quote != 0) {
                if (c == quote) quote = 0;
            } else if (c == '"' || c == '\'') {
                quote = c;
            } else if (c == '>') {
                break;
            }
        }
        if (at_ >= text_.size()) return false;
        const bool isEmpty = text_[at_ - 1] == '/';
        ++at_;
        if (!beginItem(name, start)) return false;
        if (isEmpty) endItem();
        return true;
    }

    // False for a section that is not where sections are.
    bool beginItem(std::string_view name, std::size_t start) {
        if (holds(rule_.sections, name) && level_ != kSectionLevel) return false;
        if (level_ == kSectionLevel) cuts_ = holds(rule_.bulky, name);
        if (level_ == kPieceLevel && cuts_) {
            pieceStart_ = start;
            out_.frame.append(text_.substr(copied_, start - copied_)).append("<").append(name);
            out_.frame.append(" ").append(kPieceNumber).append("=\"").append(std::to_string(out_.pieces.size()));
            out_.frame.append("\"/>");
        }
        ++level_;
        return true;
    }

    void endItem() {
        if (--level_ != kPieceLevel || !cuts_) return;
        out_.pieces.push_back(text_.substr(pieceStart_, at_ - pieceStart_));
        copied_ = at_;
    }

    std::string_view text_;
    const CutRule& rule_;
    CutText& out_;
    std::size_t at_ = 0;
    std::size_t copied_ = 0;  // up to here the text is in the frame or in pieces
    std::size_t pieceStart_ = 0;
    std::size_t level_ = 0;  // items that are open
    bool cuts_ = false;      // in the section that is open
};

}  // namespace

bool cutText(std::string_view text, const CutRule& rule, CutText& out) {
    return Cutter(text, rule, out).run();
}

}  // namespace qrs::standard
