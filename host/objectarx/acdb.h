// Names shared by the classes of the drawing database.
#pragma once

#include "adesk.h"

struct AcDb {
    enum OpenMode { kForRead = 0, kForWrite = 1, kForNotify = 2 };

    enum Visibility { kInvisible = 1, kVisible = 0 };

    // Forms of drawing files.
    enum AcDbDwgVersion {
        kDHL_Unknown = 0,
        kDHL_1009,  // R11 and R12; older ones count as such
        kDHL_1012,  // R13
        kDHL_1014,  // R14
        kDHL_1015,  // 2000
        kDHL_1800,  // 2004
        kDHL_1021,  // 2007
        kDHL_1024,  // 2010
        kDHL_1027,  // 2013
        kDHL_1032,  // 2018
        kDHL_CURRENT = kDHL_1032,
    };

    // Hundredths of a millimetre; negative values are rules.
    enum LineWeight {
        kLnWt000 = 0,
        kLnWt005 = 5,
        kLnWt009 = 9,
        kLnWt013 = 13,
        kLnWt015 = 15,
        kLnWt018 = 18,
        kLnWt020 = 20,
        kLnWt025 = 25,
        kLnWt030 = 30,
        kLnWt035 = 35,
        kLnWt040 = 40,
        kLnWt050 = 50,
        kLnWt053 = 53,
        kLnWt060 = 60,
        kLnWt070 = 70,
        kLnWt080 = 80,
        kLnWt090 = 90,
        kLnWt100 = 100,
        kLnWt106 = 106,
        kLnWt120 = 120,
        kLnWt140 = 140,
        kLnWt158 = 158,
        kLnWt200 = 200,
        kLnWt211 = 211,
        kLnWtByLayer = -1,
        kLnWtByBlock = -2,
        kLnWtByLwDefault = -3,
    };

    enum MaintenanceReleaseVersion { kMReleaseCurrent = 0 };

    enum TextHorzMode {
        kTextLeft = 0,
        kTextCenter = 1,
        kTextRight = 2,
        kTextAlign = 3,
        kTextMid = 4,
        kTextFit = 5,
    };
    enum TextVertMode { kTextBase = 0, kTextBottom = 1, kTextVertMid = 2, kTextTop = 3 };

    enum DxfCode {
        kDxfInvalid = -9999,
        kDxfOperator = -4,
        kDxfStart = 0,
        kDxfText = 1,
        kDxfSymbolTableName = 2,
        kDxfHandle = 5,
        kDxfLinetypeName = 6,
        kDxfLayerName = 8,
        kDxfColor = 62,
        kDxfSubclass = 100,
        kDxfRegAppName = 1001,
        kDxfXdAsciiString = 1000,
        kDxfXdControlString = 1002,
        kDxfXdLayerName = 1003,
        kDxfXdBinaryChunk = 1004,
        kDxfXdHandle = 1005,
        kDxfXdReal = 1040,
        kDxfXdInteger16 = 1070,
        kDxfXdInteger32 = 1071,
    };
};
