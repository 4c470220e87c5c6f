// The module at work on a copy of the shipped standard, in a drawing with some of its layers.
#pragma once

#include "dbsymtb.h"
#include "qrs_kernal.h"
#include "rxregsvc.h"
#include "standard/standard.h"
#include "support.h"

extern "C" AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* application);

namespace qrs::test {

class StandardFrame : public Frame {
  protected:
    StandardFrame() {
        for (const char* name : {"pwx.qdsl", "linetype.dbf", "pipe.dbf", "userlayer.dbf"})
            std::filesystem::copy_file(std::filesystem::path(QRS_SOURCE_DIR) / "data" / name, folder / name);
        addMaterial();
        QrsExport::SetSystemFolder(platform::innerPath(folder.path()));
        acrxEntryPoint(AcRx::kInitAppMsg, nullptr);
        open(drawingText({{"0"},
                          {"给排-生活给水-管线", 4, 3},
                          {"给排-生活给水-立管", 0, -3},
                          {"给排-雨水-管线", 1, 2},
                          {"新给水", 0, 6}},
                         {{"新给水"}, {"给排-生活给水-管线"}}));
    }
    ~StandardFrame() override {
        acrxEntryPoint(AcRx::kUnloadAppMsg, nullptr);
        QrsExport::SetSystemFolder({});
    }

    // An office's own pipe, "自制管", in the table that every test of this program sees.
    void addMaterial() const {
        std::string table = folder.read("pipe.dbf"), name;
        ASSERT_TRUE(platform::encode(936, L"自制管", name));
        const std::size_t length = static_cast<unsigned char>(table[10]);
        std::string record = table.substr(table.size() - length - 1, length);
        record.replace(1, 24, name + std::string(24 - name.size(), ' '));
        table.insert(table.size() - 1, record);
        ++table[4];
        folder.write("pipe.dbf", table);
    }

    std::filesystem::path standardFile() const { return folder / "pwx.qdsl"; }
    // What the file says, not what is in memory.
    standard::Standard savedStandard() const {
        standard::Standard standard;
        platform::Error error;
        EXPECT_TRUE(standard::readStandard(platform::innerPath(standardFile()), standard, error)) << error.message;
        return standard;
    }
};

inline PipeNode* system(const standard::Standard& standard, const wchar_t* name) {
    for (const auto& group : standard.groups)
        if (PipeNode* found = group->FindPipeSystem(CString(name))) return found;
    return nullptr;
}

}  // namespace qrs::test
