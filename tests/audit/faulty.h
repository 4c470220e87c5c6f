// A drawing that breaks every rule but textstyle-case: the shipped standard has no letters in names of styles.
#pragma once

#include <string>

#include "../dxftext.h"

inline std::string tableText(const std::string& name, const std::string& records) {
    return "0=TABLE;2=" + name + ";70=9;" + records + "0=ENDTAB;";
}

inline std::string layerText(const std::string& name, const std::string& rest) {
    return "0=LAYER;100=AcDbSymbolTableRecord;100=AcDbLayerTableRecord;2=" + name + ";70=0;" + rest + ";";
}

inline std::string entityText(const std::string& type, const std::string& handle, const std::string& layer,
                              const std::string& rest) {
    return "0=" + type + ";5=" + handle + ";100=AcDbEntity;8=" + layer + ";" + rest + ";";
}

// A pipe of a system, from the origin to 3000,0,height; what it bears follows.
inline std::string pipeText(const std::string& handle, const std::string& layer, const std::string& system,
                            const std::string& end, const std::string& rest = "", const std::string& attachments = "") {
    return entityText(
        "QRS_PIPE", handle, layer,
        "100=TDbPipePrototype;1=" + system + ";90=0;" + attachments + "100=TDbPipe;70=0;10=0;20=0;30=0;" + end + rest);
}

inline std::string faultyDrawing(const std::string& version = "AC1024") {
    const std::string along = "11=3000;21=0;31=0", up = "11=0;21=0;31=3000";
    const std::string serial1 = ";1001=PIPE-SERIAL;1000=1";
    const std::string line = "100=AcDbLine;10=0;20=0;11=1;21=1";
    std::string text = "0=SECTION;2=HEADER;9=$ACADVER;1=" + version + ";9=$HANDSEED;5=FFF;0=ENDSEC;0=SECTION;2=TABLES;";
    text += tableText(
        "LTYPE",
        "0=LTYPE;5=10;100=AcDbSymbolTableRecord;100=AcDbLinetypeTableRecord;2=Continuous;70=0;3=;72=65;73=0;40=0;"
        "0=LTYPE;5=11;100=AcDbSymbolTableRecord;100=AcDbLinetypeTableRecord;2=HIDDEN;70=0;3=;72=65;73=2;40=10;"
        "49=5;74=0;49=-5;74=0;"
        "0=LTYPE;5=12;100=AcDbSymbolTableRecord;100=AcDbLinetypeTableRecord;2=Dashed;70=0;3=;72=65;73=2;"
        "40=19.05;49=12.7;74=0;49=-6.35;74=0;"
        "0=LTYPE;5=13;100=AcDbSymbolTableRecord;100=AcDbLinetypeTableRecord;2=WALL;70=0;3=;72=65;73=2;40=10;"
        "49=9;74=0;49=-1;74=0;");
    text += tableText(
        "LAYER", layerText("0", "62=7;6=Continuous") + layerText("给排-生活给水-管线", "62=1;6=HIDDEN;290=0;370=50") +
                     layerText("给水立管", "62=3;6=Continuous") + layerText("temp", "62=8;6=Continuous") +
                     layerText("EMPTY", "62=8;6=Continuous") + layerText("给排-bim-井", "62=6;6=Continuous"));
    text +=
        tableText("STYLE",
                  "0=STYLE;5=20;100=AcDbSymbolTableRecord;100=AcDbTextStyleTableRecord;2=FANCY;70=0;40=0;41=1;50=0;"
                  "71=0;42=1;3=txt;4=;"
                  "0=STYLE;5=21;100=AcDbSymbolTableRecord;100=AcDbTextStyleTableRecord;2=给排-管径;70=0;40=5;41=0.7;"
                  "50=0;71=0;42=1;3=GBENOR;4=gbcbig.shx;");
    text += tableText("DIMSTYLE",
                      "0=DIMSTYLE;105=22;100=AcDbSymbolTableRecord;100=AcDbDimStyleTableRecord;2=D1;70=0;340=20;");
    text += tableText("APPID", "0=APPID;2=PIPE-SERIAL;70=0;");
    text += "0=ENDSEC;0=SECTION;2=BLOCKS;0=BLOCK;5=30;8=0;2=B;70=0;10=0;20=0;" +
            // By block in a block is no property of its own.
            entityText("LINE", "31", "给排-生活给水-管线", "62=0;6=BYBLOCK;370=-2;" + line) +
            entityText("DIMENSION", "33", "0", "100=AcDbDimension;10=0;20=0;70=0;3=D1") +
            entityText("DIMENSION", "34", "0", "100=AcDbDimension;10=0;20=0;70=0;3=GONE-DIM") + "0=ENDBLK;5=32;8=0;";
    text += "0=ENDSEC;0=SECTION;2=ENTITIES;" +
            entityText("LINE", "40", "给排-生活给水-管线", "62=2;6=WALL;370=25;" + line) +
            // The layer may stand before what the mark begins.
            "0=LINE;5=41;8=给排-生活给水-管线;100=AcDbEntity;6=GONE-LINE;420=255;" + line + ";" +
            entityText("LINE", "42", "给水立管", line) + entityText("LINE", "43", "GONE-LAYER", line) +
            entityText("LINE", "44", "0", line) +
            entityText("TEXT", "45", "temp", "100=AcDbText;10=0;20=0;40=3;1=a;7=FANCY") +
            entityText("MTEXT", "46", "temp", "100=AcDbMText;10=0;20=0;40=3;1=a;7=GONE-STYLE") +
            entityText("DIMENSION", "47", "temp", "100=AcDbDimension;10=0;20=0;70=0;3=D1") +
            pipeText("50", "给排-生活给水-管线", "给水", along) + pipeText("51", "temp", "污水", along) +
            pipeText("52", "temp", "牛奶", along) + pipeText("53", "给排-生活给水-管线", "生活给水", up) +
            pipeText("54", "给排-生活给水-管线", "生活给水", up, serial1) +
            pipeText("55", "给排-生活给水-管线", "生活给水", up, serial1) + "0=ENDSEC;0=EOF";
    return dxfText(text);
}
