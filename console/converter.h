// DWG drawings, which another program turns into DXF and back.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "console/options.h"
#include "host/platform/error.h"
#include "host/platform/files.h"
#include "host/platform/tree.h"

namespace qrs::console {

// What is wrong with a converter's command, or nothing.
//
//     dwgconvert {in} {out} {version}
//
// Words are parted by blanks; quotes ("..." and '...') keep blanks. In a word, {in} and {out} stand for the two files,
// {indir} and {outdir} for their folders, in which nothing else lies, {version} for the release (2018, 14), {from} and
// {to} for dwg and dxf, {FROM} and {TO} for DWG and DXF.
std::string findConverterMisuse(const std::string& command);

// The command of the options, else of the settings, else nothing. The settings must be in use.
std::string converterOf(const Options& options);

// A DWG drawing as DXF in a private folder. Nothing beside the drawing is touched before it is put back, and then its
// file is replaced whole.
class ConvertedDrawing {
  public:
    // Null, with the reason in error, when there is no converter, it fails, takes too long or writes no file.
    static std::unique_ptr<ConvertedDrawing> make(const Options& options, const std::filesystem::path& dwg,
                                                  platform::Error& error);

    // The drawing as DXF.
    const std::filesystem::path& file() const { return dxf_; }
    // Somebody has written the DXF file since.
    bool wasWritten() const;
    // Converts the DXF file back and puts the result where the target is; earlier states of the target stay as .bak.
    // False, with the reason in error, when the converter fails, takes too long, writes no file or one of another
    // release, when the drawing was changed by another program meanwhile, or it cannot be written.
    bool putBack(const std::filesystem::path& target, platform::Error& error);
    // Writes the drawing as it was.
    bool copyTo(const std::filesystem::path& target, platform::Error& error) const;

  private:
    ConvertedDrawing() = default;

    std::unique_ptr<platform::PrivateFolder> folder_;
    std::string command_;
    std::string release_;
    double seconds_ = 0;
    int backups_ = 1;
    std::filesystem::path dwg_, dxf_;
    platform::FileMark dwgMark_, dxfMark_;
};

// Whether a name is that of a DWG drawing, by its extension.
bool isNamedDwg(const std::filesystem::path& file);

// Converts a DXF file, and puts the result where the target is. False, with the reason in error, as above.
bool writeAsDwg(const Options& options, const std::filesystem::path& dxf, const std::string& release,
                const std::filesystem::path& target, platform::Error& error);

}  // namespace qrs::console
