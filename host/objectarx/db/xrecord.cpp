// Records that hold a chain of values.
#include "dbxrecrd.h"

#include <cmath>

#include "host/dxf/classcodes.h"
#include "host/objectarx/db/state.h"
#include "host/objectarx/db/valuekind.h"
#include "host/objectarx/db/xdata.h"
#include "host/platform/codepage.h"

using qrs::host::DatabaseState;
using qrs::host::DetachedTags;
using qrs::host::ValueKind;
namespace codes = qrs::dxf::codes;
namespace dxf = qrs::dxf;

ACRX_DEFINE_DXF_MEMBERS(AcDbXrecord, AcDbObject, "XRECORD")

namespace {

// Where in a record the values stand.
struct Content {
    std::uint32_t begin = 0;
    std::uint32_t end = 0;
    std::vector<dxf::NewTag> tags;
};

Content readContent(const dxf::Drawing& drawing, dxf::RecordId record) {
    Content content;
    dxf::TagCursor cursor = drawing.tags(record);
    dxf::Tag tag;
    bool isContent = false;
    bool isFirst = false;
    while (cursor.next(tag) && tag.code < codes::kFirstXdata) {
        // Right after the mark it is no value.
        const bool isCloning = isFirst && tag.code == codes::xrecord::kCloning;
        isFirst = !isContent && tag.code == codes::kSubclass && dxf::trimmed(tag.value) == "AcDbXrecord";
        if (isFirst || isCloning) content.begin = tag.end;
        if (isContent && !isCloning) content.tags.push_back({tag.code, std::string(tag.value)});
        isContent = isContent || isFirst;
        content.end = tag.end;
    }
    if (!isContent) content.begin = content.end;
    return content;
}

// A handle is what an object of the drawing has (of any for the drawing number 0); 0 for the null id.
bool nameText(const resbuf& link, std::uint32_t drawingNumber, std::string& text) {
    const AcDbObjectId id = AcDbObjectId::fromOldId(link.resval.rlname[0]);
    if (!id.isNull() && ((drawingNumber != 0 && id.databaseNumber() != drawingNumber) || !id.isValid())) return false;
    text = dxf::handleText(id.isNull() ? 0 : Adesk::UInt64(id.handle()));
    return true;
}

Acad::ErrorStatus toTags(const resbuf& chain, const DatabaseState* state, std::vector<dxf::NewTag>& tags) {
    for (const resbuf* link = &chain; link; link = link->rbnext) {
        const int code = link->restype;
        const ValueKind kind = qrs::host::valueKind(code);
        std::string text;
        const bool isValue = code >= 1 && code < codes::kFirstXdata && code != codes::kHandle &&
                             code != codes::kDimStyleHandle && kind != ValueKind::None && kind != ValueKind::Unknown;
        if (!isValue) return Acad::eInvalidInput;
        if (kind == ValueKind::Name) {
            if (!nameText(*link, state ? state->number : 0, text)) return Acad::eInvalidInput;
            tags.push_back({code, text});
        } else if (!qrs::host::appendValueTags(state ? &state->drawing() : nullptr, *link, tags)) {
            return Acad::eInvalidInput;
        }
    }
    return Acad::eOk;
}

bool sameTags(const dxf::Drawing& drawing, const std::vector<dxf::NewTag>& a, const std::vector<dxf::NewTag>& b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (!qrs::host::sameValue(drawing, a[i], b[i])) return false;
    return true;
}

}  // namespace

AcDbXrecord::AcDbXrecord() {
    setOwnTags([] {
        static const qrs::host::RecordFormat format;
        return DetachedTags{&format, {}};
    });
}

Acad::ErrorStatus AcDbXrecord::rbChain(resbuf** chain, AcDbDatabase*) const {
    if (!chain) return Acad::eInvalidInput;
    *chain = nullptr;
    DatabaseState* state = DatabaseState::of(database());
    if (!state || !isReadEnabled()) return Acad::eNotOpenForRead;
    qrs::host::ChainBuilder values(*state);
    for (const dxf::NewTag& tag : readContent(state->drawing(), record()).tags)
        values.add({tag.code, tag.value, 0, 0});
    *chain = values.take();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbXrecord::setFromRbChain(const resbuf& chain, AcDbDatabase*) {
    if (const Acad::ErrorStatus status = checkWrite(); status != Acad::eOk) return status;
    DatabaseState* state = DatabaseState::of(database());
    std::vector<dxf::NewTag> tags;
    if (const Acad::ErrorStatus status = toTags(chain, state, tags); status != Acad::eOk) return status;
    if (!state) {
        qrs::host::OpenObjects::ownTags(*this)->tags = std::move(tags);
        return Acad::eOk;
    }
    dxf::Drawing& drawing = state->drawing();
    const Content present = readContent(drawing, record());
    if (sameTags(drawing, present.tags, tags)) return Acad::eOk;
    drawing.eraseTags(record(), present.begin, present.end);
    drawing.insertTags(record(), present.begin, tags);
    return Acad::eOk;
}
