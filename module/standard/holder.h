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

    // Makes the look-up of layers by name anew: pipe systems in order, then the groups of other layers.
    void initLayers();
    // The first layer of that name as of the last initLayers; null when there is none.
    LayerNode* findLayer(const CString& layerName) const;

  private:
    StandardHolder() = default;

    Standard standard_;
    CString path_;
    bool loaded_ = false;
    LayerNameMap layers_;
    LinetypeTextSettings linetypeText_;
};

// The loaded standard; null when none is loaded.
Standard* currentStandard();

}  // namespace qrs::standard
