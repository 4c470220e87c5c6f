// Binary drawings: records are handed out in text form, and a change encodes only the tags it writes.
#pragma once

#include "host/dxf/codeform.h"
#include "host/dxf/form.h"
#include "host/dxf/textcache.h"

namespace qrs::dxf {

class BinaryForm final : public Form {
  public:
    explicit BinaryForm(CodeForm codes) : codes_(codes) {}

    bool isBinary() const override { return true; }
    std::string_view textOf(const StoredRecord& record) override;
    void forget(RecordId id) override { texts_.forget(id); }
    void forgetAll() override { texts_.forgetAll(); }
    void readFields(std::string_view record, RecordFields& fields) const override;

    int setValue(const StoredRecord& record, const Tag& tag, std::string_view value, Draft& draft) override;
    void editTags(const StoredRecord& record, const std::vector<TagEdit>& edits, Draft& draft) override;
    void replaceTags(const StoredRecord& record, std::uint32_t begin, std::uint32_t end,
                     const std::vector<NewTag>& tags, Draft& draft) override;
    void writeRecord(const std::vector<NewTag>& tags, std::string_view neighbour, Draft& draft) override;
    bool endLastLine(std::string_view /*record*/, Draft& /*draft*/) override { return false; }

  private:
    void append(const std::vector<NewTag>& tags, Draft& draft) const;

    CodeForm codes_;
    TextCache texts_;
};

}  // namespace qrs::dxf
