// The drawing database, and what the application does with it.
#include "acutads.h"
#include "dbapserv.h"
#include "dbdict.h"
#include "dbsymtb.h"
#include "host/drawing/newdrawing.h"
#include "host/drawing/newrecords.h"
#include "host/dxf/groupcodes.h"
#include "host/objectarx/db/access.h"
#include "host/objectarx/db/state.h"
#include "host/platform/callrecord.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"

using qrs::host::DatabaseAccess;
using qrs::host::DatabaseState;
using qrs::host::TableKind;
namespace dxf = qrs::dxf;
namespace platform = qrs::platform;

ACRX_DEFINE_MEMBERS(AcDbDatabase, AcRxObject)

namespace {

std::unique_ptr<dxf::Drawing> emptyDrawing() {
    platform::Error error;
    return dxf::Drawing::fromBytes("  0\nEOF\n", "empty drawing", error);
}

template <class Table>
Acad::ErrorStatus openTable(const DatabaseState& state, TableKind kind, Table*& table, AcDb::OpenMode mode) {
    return acdbOpenObject(table, AcDbObjectId(state.number, qrs::host::tableId(kind)), mode);
}

void nameFile(DatabaseState& state, const std::filesystem::path& native) {
    state.path = native;
    state.fileName = platform::innerPath(native);
    state.displayName = platform::innerPath(native.filename());
}

}  // namespace

AcDbDatabase::AcDbDatabase(bool buildDefaultDrawing, bool)
    : state_(std::make_unique<DatabaseState>(*this, buildDefaultDrawing ? qrs::host::newDrawing() : emptyDrawing())) {
    state_->displayName = L"Drawing" + std::to_wstring(state_->number) + L".dxf";
}

AcDbDatabase::~AcDbDatabase() = default;

// --- files

Acad::ErrorStatus AcDbDatabase::dxfIn(const ACHAR* fileName, const ACHAR* logFileName) {
    if (!fileName || !*fileName) return Acad::eInvalidInput;
    if (!state_->objects().areNone()) return Acad::eWasOpenForRead;
    platform::recordCall("AcDbDatabase::dxfIn", fileName);
    if (!platform::fileExists(fileName)) return Acad::eFileNotFound;
    platform::Error error;
    const std::filesystem::path native = platform::nativePath(fileName);
    std::unique_ptr<dxf::Drawing> drawing = dxf::Drawing::open(native, error);
    if (!drawing) {
        platform::Error logError;
        if (logFileName)
            platform::writeFileAtomically(platform::nativePath(logFileName), error.message + "\n", false, logError);
        return Acad::eBadDxfFile;
    }
    state_->replace(std::move(drawing));
    nameFile(*state_, native);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDatabase::dxfOut(const ACHAR* fileName) {
    if (!fileName || !*fileName) return Acad::eInvalidInput;
    platform::Error error;
    return DatabaseAccess::save(*this, platform::nativePath(fileName), true, error) ? Acad::eOk : Acad::eFileAccessErr;
}

Acad::ErrorStatus AcDbDatabase::getFilename(const ACHAR*& fileName) const {
    fileName = state_->fileName.c_str();
    return Acad::eOk;
}

// --- tables

Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbBlockTable*& table, AcDb::OpenMode mode) {
    return openTable(*state_, TableKind::Block, table, mode);
}
Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbDimStyleTable*& table, AcDb::OpenMode mode) {
    return openTable(*state_, TableKind::DimStyle, table, mode);
}
Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbLayerTable*& table, AcDb::OpenMode mode) {
    return openTable(*state_, TableKind::Layer, table, mode);
}
Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbLinetypeTable*& table, AcDb::OpenMode mode) {
    return openTable(*state_, TableKind::Linetype, table, mode);
}
Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbRegAppTable*& table, AcDb::OpenMode mode) {
    return openTable(*state_, TableKind::RegApp, table, mode);
}
Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbTextStyleTable*& table, AcDb::OpenMode mode) {
    return openTable(*state_, TableKind::TextStyle, table, mode);
}

AcDbObjectId AcDbDatabase::layerTableId() const {
    return {state_->number, qrs::host::tableId(TableKind::Layer)};
}
// --- objects

AcDbObjectId AcDbDatabase::namedObjectsDictionaryId() const {
    return state_->idOf(qrs::host::rootDictionary(state_->drawing()));
}

Acad::ErrorStatus AcDbDatabase::getNamedObjectsDictionary(AcDbDictionary*& dictionary, AcDb::OpenMode mode) {
    dictionary = nullptr;
    if (state_->drawing().version() < dxf::kFirstWithObjects) return Acad::eNotApplicable;
    if (mode == AcDb::kForWrite) qrs::host::NewRecords(state_->contents()).ensureRootDictionary();
    const AcDbObjectId id = namedObjectsDictionaryId();
    return id.isNull() ? Acad::eKeyNotFound : acdbOpenObject(dictionary, id, mode);
}

Acad::ErrorStatus AcDbDatabase::getAcDbObjectId(AcDbObjectId& id, bool, const AcDbHandle& handle, Adesk::UInt32) {
    id.setNull();
    if (handle.isNull()) return Acad::eNullHandle;
    id = state_->idOf(state_->drawing().findHandle(handle));
    return id.isNull() ? Acad::eUnknownHandle : Acad::eOk;
}

// --- header variables that are ids

AcDbObjectId AcDbDatabase::layerZero() const {
    return state_->idOf(state_->tables().find(TableKind::Layer, L"0"));
}

AcDb::AcDbDwgVersion AcDbDatabase::originalFileVersion() const {
    static constexpr struct {
        dxf::Version first;
        AcDb::AcDbDwgVersion version;
    } kVersions[] = {
        {dxf::Version::R2018, AcDb::kDHL_1032}, {dxf::Version::R2013, AcDb::kDHL_1027},
        {dxf::Version::R2010, AcDb::kDHL_1024}, {dxf::Version::R2007, AcDb::kDHL_1021},
        {dxf::Version::R2004, AcDb::kDHL_1800}, {dxf::Version::R2000, AcDb::kDHL_1015},
        {dxf::Version::R14, AcDb::kDHL_1014},   {dxf::Version::R13, AcDb::kDHL_1012},
    };
    for (const auto& known : kVersions)
        if (state_->drawing().version() >= known.first) return known.version;
    return AcDb::kDHL_1009;
}

AcDbObjectId AcDbDatabase::clayer() const {
    const dxf::RecordId variable = state_->drawing().findHeaderVariable("$CLAYER");
    dxf::Tag tag;
    dxf::RecordId layer = dxf::kNoRecord;
    if (variable != dxf::kNoRecord && state_->drawing().findTag(variable, qrs::dxf::codes::kLayer, tag))
        layer = state_->tables().find(TableKind::Layer, qrs::host::readText(state_->drawing(), tag.value));
    return layer == dxf::kNoRecord ? layerZero() : state_->idOf(layer);
}

Acad::ErrorStatus AcDbDatabase::setClayer(AcDbObjectId layer) {
    TableKind kind = TableKind::Block;
    const std::uint32_t record = layer.recordNumber();
    if (layer.database() != this || record >= state_->drawing().recordCount() || layer.isErased() ||
        !state_->tables().kindOf(record, kind) || kind != TableKind::Layer)
        return Acad::eInvalidLayer;
    std::wstring name = state_->tables().nameOf(record);
    resbuf value{};
    value.restype = RTSTR;
    value.resval.rstring = name.data();
    return qrs::host::setHeaderVariable(this, L"CLAYER", value);
}

bool AcDbDatabase::tilemode() const {
    resbuf value{};
    return qrs::host::headerVariable(this, L"TILEMODE", value) == Acad::eOk && value.resval.rint != 0;
}

double AcDbDatabase::ltscale() const {
    resbuf value{};
    return qrs::host::headerVariable(this, L"LTSCALE", value) == Acad::eOk ? value.resval.rreal : 1.0;
}

double AcDbDatabase::dimscale() const {
    resbuf value{};
    return qrs::host::headerVariable(this, L"DIMSCALE", value) == Acad::eOk ? value.resval.rreal : 1.0;
}

Acad::ErrorStatus AcDbDatabase::setLtscale(double scale) {
    if (!(scale > 0.0)) return Acad::eInvalidInput;
    resbuf value{};
    value.restype = RTREAL;
    value.resval.rreal = scale;
    return qrs::host::setHeaderVariable(this, L"LTSCALE", value);
}

// --- the application's side

namespace qrs::host {

namespace {

std::unique_ptr<AcDbDatabase> databaseOf(std::unique_ptr<dxf::Drawing> drawing) {
    auto database = std::make_unique<AcDbDatabase>(false);
    DatabaseState::of(database.get())->replace(std::move(drawing));
    return database;
}

}  // namespace

std::unique_ptr<AcDbDatabase> DatabaseAccess::open(const std::filesystem::path& native, platform::Error& error) {
    platform::recordCall("AcDbDatabase::open", platform::innerPath(native.filename()));
    std::unique_ptr<dxf::Drawing> drawing = dxf::Drawing::open(native, error);
    if (!drawing) return nullptr;
    std::unique_ptr<AcDbDatabase> database = databaseOf(std::move(drawing));
    nameFile(*DatabaseState::of(database.get()), native);
    return database;
}

std::unique_ptr<AcDbDatabase> DatabaseAccess::openBytes(std::string bytes, const std::string& name,
                                                        platform::Error& error) {
    std::unique_ptr<dxf::Drawing> drawing = dxf::Drawing::fromBytes(std::move(bytes), name, error);
    if (!drawing) return nullptr;
    std::unique_ptr<AcDbDatabase> database = databaseOf(std::move(drawing));
    DatabaseState::of(database.get())->displayName = platform::fromUtf8(name);
    return database;
}

bool DatabaseAccess::save(AcDbDatabase& database, const std::filesystem::path& native, int backups,
                          platform::Error& error) {
    DatabaseState* state = DatabaseState::of(&database);
    platform::recordCall("AcDbDatabase::save", platform::innerPath(native.filename()));
    state->settle();
    if (!state->drawing().save(native, backups, error)) return false;
    nameFile(*state, native);
    return true;
}

std::string DatabaseAccess::bytes(const AcDbDatabase& database) {
    DatabaseState::of(&database)->settle();
    return DatabaseState::of(&database)->drawing().toBytes();
}

dxf::Drawing& DatabaseAccess::drawing(AcDbDatabase& database) {
    return DatabaseState::of(&database)->drawing();
}

const SymbolTables& DatabaseAccess::tables(AcDbDatabase& database) {
    return DatabaseState::of(&database)->tables();
}

bool DatabaseAccess::isModified(const AcDbDatabase& database) {
    return DatabaseState::of(&database)->drawing().isModified();
}

void DatabaseAccess::beginStep(AcDbDatabase& database, const std::wstring& name) {
    DatabaseState* state = DatabaseState::of(&database);
    // What follows from what was done before belongs to the step before.
    state->settle();
    state->drawing().beginStep(name);
}

std::uint64_t DatabaseAccess::keepStep(AcDbDatabase& database) {
    return DatabaseState::of(&database)->drawing().keepStep();
}

bool DatabaseAccess::takeBack(AcDbDatabase& database, std::wstring& name, std::uint64_t* number) {
    DatabaseState* state = DatabaseState::of(&database);
    state->objects().writeAll();
    const dxf::Journal::Step* last = state->drawing().lastStep();
    if (!last) return false;
    name = last->name;
    if (number) *number = last->number;
    state->drawing().takeBack();
    state->renew();
    platform::recordCall("AcDbDatabase::takeBack", name);
    return true;
}

std::uint32_t DatabaseAccess::number(const AcDbDatabase& database) {
    return DatabaseState::of(&database)->number;
}

AcDbDatabase* DatabaseAccess::byNumber(std::uint32_t number) {
    DatabaseState* state = DatabaseState::byNumber(number);
    return state ? &state->database : nullptr;
}

std::wstring DatabaseAccess::displayName(const AcDbDatabase& database) {
    return DatabaseState::of(&database)->displayName;
}

void DatabaseAccess::setDisplayName(AcDbDatabase& database, std::wstring_view name) {
    DatabaseState::of(&database)->displayName = name;
}

const std::filesystem::path& DatabaseAccess::nativePath(const AcDbDatabase& database) {
    return DatabaseState::of(&database)->path;
}

std::uint32_t DatabaseAccess::recordOf(AcDbObjectId id) {
    const DatabaseState* state = DatabaseState::byNumber(id.databaseNumber());
    return state ? state->ids().recordOf(id.recordNumber()) : dxf::kNoRecord;
}

AcDbObjectId DatabaseAccess::idOf(const AcDbDatabase& database, std::uint32_t record) {
    return DatabaseState::of(&database)->idOf(record);
}

std::wstring DatabaseAccess::dxfName(AcDbObjectId id) {
    const DatabaseState* state = DatabaseState::byNumber(id.databaseNumber());
    const dxf::RecordId record = state ? state->ids().recordOf(id.recordNumber()) : dxf::kNoRecord;
    return record == dxf::kNoRecord ? std::wstring() : platform::fromUtf8(state->drawing().typeNameOf(record));
}

}  // namespace qrs::host
