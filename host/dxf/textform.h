// Text drawings: lines as they stand in the file. New ones take the line end and the indentation of group codes that
// the record has.
#pragma once

#include "host/dxf/form.h"

namespace qrs::dxf {

class TextForm final : public Form {
  public:
    explicit TextForm(char lineEnd) : lineEnd_(lineEnd) {}

    bool isBinary() const override { return false; }
    std::string_view textOf(const StoredRecord& record) override { return record.bytes; }
    void forget(RecordId /*id*/) override {}
    void forgetAll() override {}
    void readFields(std::string_view record, RecordFields& fields) const override;

    int setValue(const StoredRecord& record, const Tag& tag, std::string_view value, Draft& draft) override;
    void editTags(const StoredRecord& record, const std::vector<TagEdit>& edits, Draft& draft) override;
    void replaceTags(const StoredRecord& record, std::uint32_t begin, std::uint32_t end,
                     const std::vector<NewTag>& tags, Draft& draft) override;
    void writeRecord(const std::vector<NewTag>& tags, std::string_view neighbour, Draft& draft) override;
    bool endLastLine(std::string_view record, Draft& draft) override;

  private:
    // How a record writes its lines.
    struct Style {
        std::string_view lineEnd;
        std::size_t codeWidth;
    };
    Style styleOf(std::string_view record) const;

    char lineEnd_;
};

}  // namespace qrs::dxf
