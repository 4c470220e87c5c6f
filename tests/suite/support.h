// Drawings with pipes in them.
#pragma once

#include <regex>

#include "../objectarx/support.h"
#include "qrs_pipeentity.h"

namespace suitetest {

using dbtest::DatabaseAccess;
using dbtest::Sample;

inline AcDbObjectId append(AcDbDatabase& database, AcDbEntity* entity, const wchar_t* space = ACDB_MODEL_SPACE) {
    AcDbObjectId id;
    AcDbBlockTableRecordPointer block(space, &database, AcDb::kForWrite);
    EXPECT_EQ(block->appendAcDbEntity(id, entity), Acad::eOk);
    entity->close();
    return id;
}

inline AcDbObjectId addLayer(AcDbDatabase& database, const wchar_t* name) {
    AcDbObjectId id;
    AcDbObjectPointer<AcDbLayerTableRecord> layer;
    layer.create();
    layer->setName(name);
    AcDbLayerTablePointer table(&database, AcDb::kForWrite);
    EXPECT_EQ(table->add(id, layer.object()), Acad::eOk);
    return id;
}

// A drawing with one entity "QRS_..." after its own tags, of handle 40; "node" is 41, "attachment" 42, a line 43.
inline std::string drawingWith(const std::string& entity) {
    std::string text = dbtest::newerDrawing();
    const std::string common = "330=1F;100=AcDbEntity;8=PIPE;";
    const std::string added = "0=" + entity + "0=QRS_PIPENODE;5=41;" + common +
                              "100=TDbPipeNode;10=1.0;20=2.0;30=3.0;"
                              "0=QRS_PIPEATTACHMENT;5=42;" +
                              common +
                              "100=TDbPipeAttachment;10=4.0;20=5.0;30=6.0;"
                              "0=LINE;5=43;" +
                              common + "100=AcDbLine;10=0.0;20=0.0;11=1.0;21=0.0;";
    const std::string end = dbtest::dxfText("0=ENDSEC;0=SECTION;2=OBJECTS;");
    return text.insert(text.find(end), dbtest::dxfText(added));
}

// What changed (Sample::changes), but for the pictures that entities carry.
inline std::string besidePictures(const std::string& changes) {
    return std::regex_replace(changes, std::regex(" [+-](160|310)=[0-9A-F]*"), "");
}

inline const std::string kPipe =
    "QRS_PIPE;5=40;330=1F;100=AcDbEntity;8=PIPE;"
    "100=TDbPipePrototype;1=J;90=1;330=42;100=TDbPipe;70=1;10=1.0;20=2.0;30=3.0;11=4.0;21=5.0;31=6.0;42=0.5;"
    "340=10;341=10;331=41;332=41;";

}  // namespace suitetest
