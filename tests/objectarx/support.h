// Small drawings in old and new form, and what changed in them.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "../dxftext.h"
#include "acdbads.h"
#include "acutads.h"
#include "dbapserv.h"
#include "dbobjptr.h"
#include "host/objectarx/db/access.h"

namespace dbtest {

using ::dxfText;
using qrs::host::DatabaseAccess;

// An old drawing without handles; "PIPE" is off, "WALL" locked. Numbers are padded as old programs wrote them.
inline std::string oldDrawing() {
    return dxfText(
        "0=SECTION;2=HEADER;9=$ACADVER;1=AC1009;9=$DWGCODEPAGE;3=ANSI_936;9=$CLAYER;8=0;0=ENDSEC;"
        "0=SECTION;2=TABLES;0=TABLE;2=LTYPE;70=     1;0=LTYPE;2=CONTINUOUS;70=     0;3=Solid;72=    65;73=     "
        "0;40=0.0;"
        "0=ENDTAB;0=TABLE;2=LAYER;70=     3;0=LAYER;2=0;70=     0;62=     7;6=CONTINUOUS;0=LAYER;2=PIPE;70=    64;"
        "62=    -3;6=CONTINUOUS;0=LAYER;2=WALL;70=    70;62=     5;6=CONTINUOUS;0=ENDTAB;0=ENDSEC;"
        "0=SECTION;2=BLOCKS;0=BLOCK;8=0;2=PUMP;70=2;10=1.0;20=2.0;30=0.0;3=PUMP;0=CIRCLE;8=pipe;10=0.0;20=0.0;40=1.0;"
        "0=ENDBLK;8=0;0=ENDSEC;0=SECTION;2=ENTITIES;0=LINE;8=pipe;10=0.0;20=0.0;11=5.0;21=0.0;"
        "0=POLYLINE;8=WALL;66=1;10=0.0;20=0.0;0=VERTEX;8=WALL;10=0.0;20=0.0;0=VERTEX;8=WALL;10=1.0;20=0.0;0=SEQEND;8="
        "WALL;"
        "0=TEXT;8=0;67=1;10=0.0;20=0.0;40=2.5;1=sheet;0=INSERT;8=LOST;2=pump;10=7.0;20=8.0;50=90.0;0=ENDSEC;0=EOF");
}

// A newer one with handles, owners and plot settings.
inline std::string newerDrawing() {
    return dxfText(
        "0=SECTION;2=HEADER;9=$ACADVER;1=AC1024;9=$DWGCODEPAGE;3=ANSI_936;9=$HANDSEED;5=50;9=$CLAYER;8=PIPE;0=ENDSEC;"
        "0=SECTION;2=TABLES;0=TABLE;2=LTYPE;5=5;330=0;100=AcDbSymbolTable;70=1;0=LTYPE;5=16;330=5;"
        "100=AcDbSymbolTableRecord;100=AcDbLinetypeTableRecord;2=Continuous;70=0;3=;72=65;73=0;40=0.0;0=ENDTAB;"
        "0=TABLE;2=LAYER;5=2;330=0;100=AcDbSymbolTable;70=2;"
        "0=LAYER;5=10;330=2;100=AcDbSymbolTableRecord;100=AcDbLayerTableRecord;2=0;70=0;62=7;6=Continuous;370=-3;390=F;"
        "347=40;348=0;0=LAYER;5=11;102={ACAD_XDICTIONARY;360=30;102=};330=2;100=AcDbSymbolTableRecord;"
        "100=AcDbLayerTableRecord;2=PIPE;70=2;62=3;6=Continuous;370=25;390=F;347=40;348=0;1001=ACAD;1070=70;0=ENDTAB;"
        "0=TABLE;2=APPID;5=9;330=0;100=AcDbSymbolTable;70=2;0=APPID;5=12;330=9;100=AcDbSymbolTableRecord;"
        "100=AcDbRegAppTableRecord;2=ACAD;70=0;0=APPID;5=13;330=9;100=AcDbSymbolTableRecord;100=AcDbRegAppTableRecord;"
        "2=PIPE-SERIAL;70=0;0=ENDTAB;"
        "0=TABLE;2=BLOCK_RECORD;5=1;330=0;100=AcDbSymbolTable;70=3;"
        "0=BLOCK_RECORD;5=1F;330=1;100=AcDbSymbolTableRecord;100=AcDbBlockTableRecord;2=*MODEL_SPACE;340=0;"
        "0=BLOCK_RECORD;5=1B;330=1;100=AcDbSymbolTableRecord;100=AcDbBlockTableRecord;2=*Paper_Space;340=0;"
        "0=BLOCK_RECORD;5=3A;330=1;100=AcDbSymbolTableRecord;100=AcDbBlockTableRecord;2=PUMP;340=0;0=ENDTAB;0=ENDSEC;"
        "0=SECTION;2=BLOCKS;0=BLOCK;5=3B;330=3A;100=AcDbEntity;8=0;100=AcDbBlockBegin;2=PUMP;70=0;10=0.0;20=0.0;30=0.0;"
        "0=POINT;5=3C;330=3A;100=AcDbEntity;8=PIPE;100=AcDbPoint;10=0.0;20=0.0;0=ENDBLK;5=3D;330=3A;100=AcDbEntity;8=0;"
        "100=AcDbBlockEnd;0=ENDSEC;"
        "0=SECTION;2=ENTITIES;0=LINE;5=2A;102={ACAD_XDICTIONARY;360=31;102=};330=1F;100=AcDbEntity;8=PIPE;100=AcDbLine;"
        "10=0.0;20=0.0;11=1.0;21=0.0;1001=ACAD;1000=keep;1010=1.0;1020=2.0;1030=3.0;1001=PIPE-SERIAL;1000=JL-1;"
        "0=CIRCLE;5=2B;330=1B;100=AcDbEntity;67=1;8=0;62=1;60=1;100=AcDbCircle;10=0.0;20=0.0;40=1.0;0=ENDSEC;"
        "0=SECTION;2=OBJECTS;0=DICTIONARY;5=C;330=0;100=AcDbDictionary;281=1;3=Notes;350=32;"
        "0=XRECORD;5=32;330=C;100=AcDbXrecord;280=1;1=text;70=7;10=1.0;20=2.0;30=3.0;330=2A;"
        "0=DICTIONARY;5=30;330=11;100=AcDbDictionary;281=1;0=DICTIONARY;5=31;330=2A;100=AcDbDictionary;281=1;0="
        "ACDBPLACEHOLDER;5=F;"
        "330=C;0=ENDSEC;0=EOF");
}

// A drawing open in memory, and the working one while it lives.
class Sample {
  public:
    explicit Sample(const std::string& text) : before_(text) {
        qrs::platform::Error error;
        database = DatabaseAccess::openBytes(text, "sample.dxf", error);
        if (!database) throw std::runtime_error(error.message);
        acdbHostApplicationServices()->setWorkingDatabase(database.get());
    }
    std::string text() const { return DatabaseAccess::bytes(*database); }
    // The lines that differ from those read, " -old" and " +new" in turn, each pair of lines joined by '='.
    std::string changes() const;
    AcDbObjectId layer(const wchar_t* name) const { return in<AcDbLayerTable>(name); }
    template <class Table>
    AcDbObjectId in(const wchar_t* name) const {
        AcDbObjectId id;
        AcDbSymbolTablePointer<Table> table(database.get());
        table->getAt(name, id);
        return id;
    }
    AcDbObjectId byHandle(unsigned handle) const {
        AcDbObjectId id;
        database->getAcDbObjectId(id, false, AcDbHandle(handle));
        return id;
    }

    std::unique_ptr<AcDbDatabase> database;

  private:
    std::string before_;
};

inline std::vector<std::string> tagsOf(const std::string& text) {
    std::vector<std::string> tags;
    std::istringstream lines(text);
    for (std::string code, value; std::getline(lines, code) && std::getline(lines, value);)
        tags.push_back(code.substr(code.find_first_not_of(' ')) + "=" + value);
    return tags;
}

// Longest common row of tags; what is beside it is told in order.
inline std::string Sample::changes() const {
    const std::vector<std::string> a = tagsOf(before_);
    const std::vector<std::string> b = tagsOf(text());
    std::vector<std::vector<int>> common(a.size() + 1, std::vector<int>(b.size() + 1));
    for (std::size_t i = a.size(); i-- > 0;)
        for (std::size_t j = b.size(); j-- > 0;)
            common[i][j] = a[i] == b[j] ? common[i + 1][j + 1] + 1 : std::max(common[i + 1][j], common[i][j + 1]);
    std::string told;
    for (std::size_t i = 0, j = 0; i < a.size() || j < b.size();) {
        if (i < a.size() && j < b.size() && a[i] == b[j])
            ++i, ++j;
        else if (j == b.size() || (i < a.size() && common[i + 1][j] >= common[i][j + 1]))
            told += " -" + a[i++];
        else
            told += " +" + b[j++];
    }
    return told;
}

// A text that is released with acutDelString.
inline std::wstring taken(ACHAR* text) {
    const std::wstring copy = text ? text : L"(null)";
    acutDelString(text);
    return copy;
}

struct Releaser {
    void operator()(resbuf* chain) const { acutRelRb(chain); }
};
using Chain = std::unique_ptr<resbuf, Releaser>;

// A chain as text: "type=value" words; releases it.
inline std::wstring told(resbuf* chain) {
    std::wstring text;
    for (const resbuf* link = chain; link; link = link->rbnext) {
        text += (text.empty() ? L"" : L" ") + std::to_wstring(link->restype) + L"=";
        if (link->restype >= 1000 ? link->restype < 1004 || link->restype == 1005 : link->restype < 10)
            text += link->resval.rstring;
        else if (link->restype == 1070 || link->restype == 70)
            text += std::to_wstring(link->resval.rint);
        else if (link->restype == 1010 || link->restype == 10)
            text += std::to_wstring(static_cast<int>(link->resval.rpoint[2]));
    }
    acutRelRb(chain);
    return text;
}

}  // namespace dbtest
