// The one standard of the process and what is held with it.
#pragma once

#include <memory>

#include "PipeNodes.h"
#include "standard/standard.h"

namespace qrs::standard {

// How the text of text linetypes is written; read from the user's settings.
struct LinetypeTextSettings {
    CString chineseShx = CString(L"hztxt.shx");
    CString englishShx = CString(L"txt.shx");
    double height = 3.0;  // millimetres on paper
    double scale = 0.7;   // width divided by height
};

// Created on first use, released at unload. For the main thread only.
class StandardHolder {
  public:
    static StandardHolder& instance();
    // Deletes the holder and the standard in it, if there is one; every pointer into the tree ends here.
    static void release();

    // The module has been started: that there is no standard, if so, has been told.
    static void start();

    StandardHolder(const StandardHolder&) = delete;
    StandardHolder& operator=(const StandardHolder&) = delete;

    bool isLoaded() const { return loaded_; }
    // Full path (inner form) of the file the standard was loaded from; where none exists and the built-in default
    // serves, the place at which the default file would lie.
    const CString& path() const { return path_; }
    Standard& standard() { return standard_; }

    // Takes a standard over; it counts as loaded from the path.
    void adopt(Standard standard, const CString& path);

    LinetypeTextSettings& linetypeText() { return linetypeText_; }

  private:
    StandardHolder() = default;

    Standard standard_;
    CString path_;
    bool loaded_ = false;
    LinetypeTextSettings linetypeText_;
};

// The loaded standard; null when none is loaded, with a message the first time when the module was never started.
Standard* currentStandard();

}  // namespace qrs::standard
