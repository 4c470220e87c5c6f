// Colours of objects and layers.
#pragma once

#include "acadstrc.h"
#include "adesk.h"

class QRS_HOST_PORT AcCmEntityColor {
  public:
    enum ColorMethod {
        kByLayer = 0xC0,
        kByBlock,
        kByColor,  // red, green, blue
        kByACI,    // index of the palette, 1 to 255
        kByPen,
        kForeground,
        kLayerOff,
        kLayerFrozen,
        kNone,
    };
    enum ACIcolorMethod {
        kACIbyBlock = 0,
        kACIforeground = 7,
        kACIbyLayer = 256,
        kACInone = 257,
    };

    // Red, green and blue of a palette index as 0xRRGGBB.
    static Adesk::UInt32 lookUpRGB(Adesk::UInt8 colorIndex);
    // The palette index (1 to 255) that lies nearest; of equally near ones the lowest.
    static Adesk::UInt8 lookUpACI(Adesk::UInt8 red, Adesk::UInt8 green, Adesk::UInt8 blue);
};

// A colour: by layer, by block, of the palette, or red, green and blue. A default-constructed one is by block (index
// 0).
class QRS_HOST_PORT AcCmColor : private AcCmEntityColor {
  public:
    AcCmColor() = default;

    ColorMethod colorMethod() const { return method_; }
    // Changes the method alone: by-colour keeps the components last set, by-index the index last set (7 when none was).
    Acad::ErrorStatus setColorMethod(ColorMethod method);
    bool isByColor() const { return method_ == kByColor; }
    bool isByLayer() const { return method_ == kByLayer; }
    bool isByBlock() const { return method_ == kByBlock; }
    bool isByACI() const { return method_ == kByACI; }

    // 0 by block, 256 by layer, 257 none. For a true colour the nearest palette index; as a drawing gives it for a
    // layer, the index that stands beside it there.
    Adesk::UInt16 colorIndex() const;
    // 0 makes the colour by block, 256 by layer, 257 none. eOutOfRange, nothing changed, outside 0 to 257.
    Acad::ErrorStatus setColorIndex(Adesk::UInt16 colorIndex);

    // Components from 0 to 255; those of the palette for an index colour, 0 for other methods.
    Adesk::UInt8 red() const;
    Adesk::UInt8 green() const;
    Adesk::UInt8 blue() const;
    Acad::ErrorStatus setRGB(Adesk::UInt8 red, Adesk::UInt8 green, Adesk::UInt8 blue);

    // Equal when method and what the method looks at are equal.
    bool operator==(const AcCmColor& other) const;
    bool operator!=(const AcCmColor& other) const { return !(*this == other); }

  private:
    friend class AcDbLayerTableRecord;
    Adesk::UInt32 rgb() const;

    ColorMethod method_ = kByBlock;
    Adesk::UInt16 index_ = 7;
    Adesk::UInt32 rgb_ = 0;
    Adesk::UInt16 besideRgb_ = 0;  // 0: none is known
};
