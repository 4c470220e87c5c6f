// Writes a drawing of any size for measurements: qrs_make_drawing ENTITIES LAYERS VERSION OUTPUT [RISERS]
//     qrs_make_drawing --binary ENTITIES ...      the same as a binary drawing
//
// RISERS of the entities are vertical pipes of twenty systems, with serials and buildings (from AC1015 on).
// The same arguments give the same bytes. VERSION is AC1009 or from AC1015 on. Every third layer is frozen; lines,
// circles, polylines, texts and block references alternate, every eighth carries xdata; about 150 bytes each.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

// Handles other records refer to; the rest are counted up after them.
enum FixedHandle : std::uint64_t {
    kModelRecord = 0x1F,
    kPaperRecord = 0x1B,
    kBlockRecord = 0x23,
    kRootDictionary = 0xC,
    kGroups = 0xD,
    kLayouts = 0x1A,
    kModelLayout = 0x22,
    kPaperLayout = 0x1E,
    kFirstFree = 0x100,
};

class Writer {
  public:
    Writer(const std::string& path, bool modern, bool binary)
        : out_(path, std::ios::binary), modern_(modern), binary_(binary) {
        if (binary_) buffer_.assign("AutoCAD Binary DXF\r\n\x1A\0", 22);
    }

    bool isModern() const { return modern_; }
    std::uint64_t nextHandle() const { return next_; }
    void setNextHandle(std::uint64_t next) { next_ = next; }

    void tag(int code, std::string_view value) {
        if (binary_) {
            binaryCode(code);
            buffer_ += value;
            buffer_ += '\0';
            return flushWhenLarge();
        }
        char line[16];
        const int length = std::snprintf(line, sizeof line, "%3d\n", code);
        buffer_.append(line, static_cast<std::size_t>(length));
        buffer_ += value;
        buffer_ += '\n';
        flushWhenLarge();
    }
    void tag(int code, long long value) {
        if (!binary_) return tag(code, std::string_view(std::to_string(value)));
        binaryCode(code);
        const bool isLong = (code >= 90 && code <= 99) || (code >= 420 && code <= 459) || code == 1071;
        littleEndian(static_cast<std::uint64_t>(value), isLong ? 4 : 2);
    }
    void real(int code, double value) {
        char text[40];
        const auto length = static_cast<std::size_t>(std::snprintf(text, sizeof text, "%.3f", value));
        if (!binary_) return tag(code, {text, length});
        // The number the text form would have.
        const double written = std::strtod(text, nullptr);
        std::uint64_t bits = 0;
        std::memcpy(&bits, &written, sizeof bits);
        binaryCode(code);
        littleEndian(bits, 8);
    }
    void point(int code, double x, double y) {
        real(code, x);
        real(code + 10, y);
        real(code + 20, 0.0);
    }
    void handle(int code, std::uint64_t value) {
        char text[20];
        const int length = std::snprintf(text, sizeof text, "%llX", static_cast<unsigned long long>(value));
        tag(code, {text, static_cast<std::size_t>(length)});
    }
    // Type, handle, owner and subclasses as the version writes them.
    void head(std::string_view type, std::uint64_t own, std::uint64_t owner, std::string_view subclass = {}) {
        tag(0, type);
        if (!modern_) return;
        handle(type == "DIMSTYLE" ? 105 : 5, own);
        handle(330, owner);
        if (!subclass.empty()) tag(100, subclass);
    }
    void sub(std::string_view subclass) {
        if (modern_) tag(100, subclass);
    }
    void section(std::string_view name) {
        tag(0, "SECTION");
        tag(2, name);
    }
    void endSection() { tag(0, "ENDSEC"); }
    std::uint64_t newHandle() { return next_++; }
    bool finish() {
        flush();
        out_.close();
        return !out_.fail();
    }

  private:
    void littleEndian(std::uint64_t bits, int size) {
        for (int i = 0; i < size; ++i)
            buffer_ += static_cast<char>(bits >> 8 * i & 0xFF);
    }
    // One byte up to AC1009, with 255 before longer codes; two bytes from then on.
    void binaryCode(int code) {
        if (!modern_ && code >= 255) buffer_ += '\xFF';
        littleEndian(static_cast<std::uint64_t>(code), modern_ || code >= 255 ? 2 : 1);
    }
    void flushWhenLarge() {
        if (buffer_.size() > (std::size_t{1} << 20)) flush();
    }
    void flush() {
        out_.write(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
        buffer_.clear();
    }

    std::ofstream out_;
    std::string buffer_;
    bool modern_;
    bool binary_;
    std::uint64_t next_ = kFirstFree;
};

// The same row of numbers everywhere, which the generators of the library do not promise for their distributions.
class Numbers {
  public:
    unsigned below(unsigned limit) {
        state_ = state_ * 6364136223846793005u + 1442695040888963407u;
        return static_cast<unsigned>((state_ >> 33) % limit);
    }
    double coordinate() { return static_cast<double>(below(9000000) + 1000000) / 1000.0; }

  private:
    std::uint64_t state_ = 42;
};

std::string layerName(unsigned number) {
    char name[24];
    std::snprintf(name, sizeof name, "PIPE-%03u", number);
    return name;
}

void header(Writer& out, std::string_view version, std::uint64_t seed) {
    out.section("HEADER");
    out.tag(9, "$ACADVER");
    out.tag(1, version);
    out.tag(9, "$DWGCODEPAGE");
    out.tag(3, "ANSI_936");
    out.tag(9, "$HANDSEED");
    out.handle(5, seed);
    out.tag(9, "$EXTMIN");
    out.point(10, 0, 0);
    out.tag(9, "$EXTMAX");
    out.point(10, 10000, 10000);
    out.tag(9, "$CLAYER");
    out.tag(8, "0");
    out.tag(9, "$LTSCALE");
    out.real(40, 1.0);
    out.endSection();
}

void classRecord(Writer& out, std::string_view name, std::string_view className, std::string_view application,
                 unsigned count, bool isEntity) {
    out.tag(0, "CLASS");
    out.tag(1, name);
    out.tag(2, className);
    out.tag(3, application);
    out.tag(90, 0LL);
    out.tag(91, static_cast<long long>(count));
    out.tag(280, 0LL);
    out.tag(281, isEntity ? 1LL : 0LL);
}

void classes(Writer& out, unsigned risers) {
    out.section("CLASSES");
    classRecord(out, "ACDBDICTIONARYWDFLT", "AcDbDictionaryWithDefault", "ObjectDBX Classes", 0, false);
    if (risers > 0) classRecord(out, "QRS_PIPE", "TDbPipe", "qrs_pipewire", risers, true);
    out.endSection();
}

std::uint64_t table(Writer& out, std::string_view name, unsigned count) {
    const std::uint64_t own = out.newHandle();
    out.tag(0, "TABLE");
    out.tag(2, name);
    if (out.isModern()) {
        out.handle(5, own);
        out.handle(330, 0);
        out.tag(100, "AcDbSymbolTable");
    }
    out.tag(70, static_cast<long long>(count));
    return own;
}

void tableRecord(Writer& out, std::string_view type, std::uint64_t own, std::uint64_t owner, std::string_view subclass,
                 std::string_view name) {
    out.head(type, own, owner, "AcDbSymbolTableRecord");
    out.sub(subclass);
    out.tag(2, name);
}

void lineTypes(Writer& out) {
    const std::vector<std::string_view> names = {"ByBlock", "ByLayer", "Continuous"};
    const std::uint64_t owner = table(out, "LTYPE", static_cast<unsigned>(names.size()));
    for (const std::string_view name : names) {
        tableRecord(out, "LTYPE", out.newHandle(), owner, "AcDbLinetypeTableRecord", name);
        out.tag(70, 0LL);
        out.tag(3, "");
        out.tag(72, 65LL);
        out.tag(73, 0LL);
        out.real(40, 0.0);
    }
    out.tag(0, "ENDTAB");
}

void layers(Writer& out, unsigned count) {
    const std::uint64_t owner = table(out, "LAYER", count + 1);
    for (unsigned number = 0; number <= count; ++number) {
        tableRecord(out, "LAYER", out.newHandle(), owner, "AcDbLayerTableRecord",
                    number == 0 ? "0" : layerName(number));
        out.tag(70, number != 0 && number % 3 == 0 ? 1LL : 0LL);
        out.tag(62, static_cast<long long>(number % 255 + 1));
        out.tag(6, "Continuous");
    }
    out.tag(0, "ENDTAB");
}

void otherTables(Writer& out, bool hasRisers) {
    for (const std::string_view name : {"VIEW", "UCS", "VPORT"}) {
        table(out, name, 0);
        out.tag(0, "ENDTAB");
    }
    std::uint64_t owner = table(out, "STYLE", 1);
    tableRecord(out, "STYLE", out.newHandle(), owner, "AcDbTextStyleTableRecord", "Standard");
    out.tag(70, 0LL);
    out.real(40, 0.0);
    out.real(41, 1.0);
    out.real(50, 0.0);
    out.tag(71, 0LL);
    out.real(42, 2.5);
    out.tag(3, "txt");
    out.tag(4, "");
    out.tag(0, "ENDTAB");
    std::vector<std::string_view> applications = {"ACAD", "QRS_BENCH"};
    if (hasRisers) applications.insert(applications.end(), {"PIPE-SERIAL", "BUILDING-SERIAL"});
    owner = table(out, "APPID", static_cast<unsigned>(applications.size()));
    for (const std::string_view name : applications) {
        tableRecord(out, "APPID", out.newHandle(), owner, "AcDbRegAppTableRecord", name);
        out.tag(70, 0LL);
    }
    out.tag(0, "ENDTAB");
    owner = table(out, "DIMSTYLE", 1);
    out.sub("AcDbDimStyleTable");
    tableRecord(out, "DIMSTYLE", out.newHandle(), owner, "AcDbDimStyleTableRecord", "Standard");
    out.tag(70, 0LL);
    out.tag(0, "ENDTAB");
}

struct BlockName {
    std::string_view name;
    std::uint64_t record;
    std::uint64_t layout;
};

std::vector<BlockName> blockNames(bool modern) {
    if (!modern) return {{"VALVE", 0, 0}};
    return {{"*Model_Space", kModelRecord, kModelLayout},
            {"*Paper_Space", kPaperRecord, kPaperLayout},
            {"VALVE", kBlockRecord, 0}};
}

void blockRecords(Writer& out) {
    const auto names = blockNames(true);
    const std::uint64_t owner = table(out, "BLOCK_RECORD", static_cast<unsigned>(names.size()));
    for (const BlockName& block : names) {
        tableRecord(out, "BLOCK_RECORD", block.record, owner, "AcDbBlockTableRecord", block.name);
        out.handle(340, block.layout);
    }
    out.tag(0, "ENDTAB");
}

void entityHead(Writer& out, std::string_view type, std::uint64_t owner, std::string_view layer,
                std::string_view subclass) {
    out.head(type, out.newHandle(), owner, "AcDbEntity");
    out.tag(8, layer);
    out.sub(subclass);
}

void line(Writer& out, std::uint64_t owner, std::string_view layer, Numbers& numbers) {
    entityHead(out, "LINE", owner, layer, "AcDbLine");
    out.point(10, numbers.coordinate(), numbers.coordinate());
    out.point(11, numbers.coordinate(), numbers.coordinate());
}

void blocks(Writer& out) {
    Numbers numbers;
    out.section("BLOCKS");
    for (const BlockName& block : blockNames(out.isModern())) {
        entityHead(out, "BLOCK", block.record, "0", "AcDbBlockBegin");
        out.tag(2, block.name);
        out.tag(70, 0LL);
        out.point(10, 0, 0);
        out.tag(3, block.name);
        out.tag(1, "");
        if (block.name == "VALVE") line(out, block.record, "0", numbers);
        out.head("ENDBLK", out.newHandle(), block.record, "AcDbEntity");
        out.tag(8, "0");
        out.sub("AcDbBlockEnd");
    }
    out.endSection();
}

void polyline(Writer& out, std::uint64_t owner, std::string_view layer, Numbers& numbers) {
    if (out.isModern()) {
        entityHead(out, "LWPOLYLINE", owner, layer, "AcDbPolyline");
        out.tag(90, 3LL);
        out.tag(70, 0LL);
        for (int vertex = 0; vertex < 3; ++vertex) {
            out.real(10, numbers.coordinate());
            out.real(20, numbers.coordinate());
        }
        return;
    }
    entityHead(out, "POLYLINE", owner, layer, {});
    out.tag(66, 1LL);
    out.point(10, 0, 0);
    for (int vertex = 0; vertex < 3; ++vertex) {
        entityHead(out, "VERTEX", owner, layer, {});
        out.point(10, numbers.coordinate(), numbers.coordinate());
    }
    entityHead(out, "SEQEND", owner, layer, {});
}

// Numbers, letters and buildings as drawings of several houses have them.
void riser(Writer& out, unsigned number, std::string_view layer, Numbers& numbers) {
    entityHead(out, "QRS_PIPE", kModelRecord, layer, "TDbPipePrototype");
    out.tag(1, "SYSTEM-" + std::to_string(number % 20));
    out.tag(90, 0LL);
    out.sub("TDbPipe");
    out.tag(70, 0LL);
    const double x = numbers.coordinate(), y = numbers.coordinate();
    out.point(10, x, y);
    out.real(11, x);
    out.real(21, y);
    out.real(31, 3000.0);
    out.tag(1001, "PIPE-SERIAL");
    out.tag(1000, (number % 2 == 0 ? "" : "WL-") + std::to_string(number / 20 + 1));
    if (number % 3 == 0) return;
    out.tag(1001, "BUILDING-SERIAL");
    out.tag(1000, std::to_string(number % 9 + 1) + "#");
}

void entity(Writer& out, unsigned number, const std::vector<std::string>& names, Numbers& numbers) {
    const std::string& layer = names[numbers.below(static_cast<unsigned>(names.size()))];
    switch (numbers.below(8)) {
        case 0:
            entityHead(out, "CIRCLE", kModelRecord, layer, "AcDbCircle");
            out.point(10, numbers.coordinate(), numbers.coordinate());
            out.real(40, 1.0 + numbers.below(500));
            break;
        case 1:
            polyline(out, kModelRecord, layer, numbers);
            break;
        case 2:
            entityHead(out, "TEXT", kModelRecord, layer, "AcDbText");
            out.point(10, numbers.coordinate(), numbers.coordinate());
            out.real(40, 350.0);
            out.tag(1, "DN" + std::to_string(15 + numbers.below(300)));
            out.sub("AcDbText");
            break;
        case 3:
            entityHead(out, "INSERT", kModelRecord, layer, "AcDbBlockReference");
            out.tag(2, "VALVE");
            out.point(10, numbers.coordinate(), numbers.coordinate());
            out.real(50, numbers.below(360));
            break;
        default:
            line(out, kModelRecord, layer, numbers);
            break;
    }
    if (number % 8 == 0) {
        out.tag(1001, "QRS_BENCH");
        out.tag(1070, static_cast<long long>(number % 1000));
        out.tag(1000, "ENTITY");
    }
}

void dictionary(Writer& out, std::uint64_t own, std::uint64_t owner,
                const std::vector<std::pair<std::string_view, std::uint64_t>>& entries) {
    out.head("DICTIONARY", own, owner, "AcDbDictionary");
    out.tag(281, 1LL);
    for (const auto& [name, value] : entries) {
        out.tag(3, name);
        out.handle(350, value);
    }
}

void objects(Writer& out) {
    out.section("OBJECTS");
    dictionary(out, kRootDictionary, 0, {{"ACAD_GROUP", kGroups}, {"ACAD_LAYOUT", kLayouts}});
    dictionary(out, kGroups, kRootDictionary, {});
    dictionary(out, kLayouts, kRootDictionary, {{"Layout1", kPaperLayout}, {"Model", kModelLayout}});
    for (const bool model : {true, false}) {
        out.head("LAYOUT", model ? kModelLayout : kPaperLayout, kLayouts, "AcDbPlotSettings");
        out.tag(1, "");
        out.tag(70, model ? 1024LL : 0LL);
        out.tag(100, "AcDbLayout");
        out.tag(1, model ? "Model" : "Layout1");
        out.tag(70, 1LL);
        out.tag(71, model ? 0LL : 1LL);
        out.handle(330, model ? kModelRecord : kPaperRecord);
    }
    out.endSection();
}

void body(Writer& out, unsigned entities, unsigned layerCount, unsigned risers) {
    if (out.isModern()) classes(out, risers);
    out.section("TABLES");
    lineTypes(out);
    layers(out, layerCount);
    otherTables(out, risers > 0);
    if (out.isModern()) blockRecords(out);
    out.endSection();
    blocks(out);
    out.section("ENTITIES");
    std::vector<std::string> names;
    for (unsigned number = 1; number <= layerCount; ++number)
        names.push_back(layerName(number));
    if (names.empty()) names.emplace_back("0");
    Numbers numbers;
    unsigned written = 0;
    for (unsigned number = 0; number < entities; ++number) {
        // Spread evenly.
        if (std::uint64_t{number + 1} * risers / entities > written)
            riser(out, written++, names[numbers.below(static_cast<unsigned>(names.size()))], numbers);
        else
            entity(out, number, names, numbers);
    }
    out.endSection();
    if (out.isModern()) objects(out);
    out.tag(0, "EOF");
}

}  // namespace

int main(int count, char** arguments) {
    const bool binary = count > 1 && std::string_view(arguments[1]) == "--binary";
    if (binary) {
        ++arguments;
        --count;
    }
    if (count != 5 && count != 6) {
        std::fprintf(stderr, "usage: qrs_make_drawing [--binary] ENTITIES LAYERS VERSION OUTPUT [RISERS]\n");
        return 2;
    }
    const auto entities = static_cast<unsigned>(std::strtoul(arguments[1], nullptr, 10));
    const auto layerCount = static_cast<unsigned>(std::strtoul(arguments[2], nullptr, 10));
    const std::string version = arguments[3];
    if (version != "AC1009" && version < "AC1015") {
        std::fprintf(stderr, "qrs_make_drawing: VERSION must be AC1009 or from AC1015 on\n");
        return 2;
    }
    const auto risers = count == 6 ? static_cast<unsigned>(std::strtoul(arguments[5], nullptr, 10)) : 0u;
    if (risers > entities || (risers > 0 && version == "AC1009")) {
        std::fprintf(stderr, "qrs_make_drawing: RISERS are some of the ENTITIES, in drawings from AC1015 on\n");
        return 2;
    }
    Writer out(arguments[4], version != "AC1009", binary);
    // Every record takes at most one handle, the vertices of a polyline one each.
    header(out, version, kFirstFree + 1000 + layerCount + std::uint64_t{entities} * 5);
    body(out, entities, layerCount, risers);
    if (!out.finish()) {
        std::fprintf(stderr, "qrs_make_drawing: cannot write %s\n", arguments[4]);
        return 1;
    }
    return 0;
}
