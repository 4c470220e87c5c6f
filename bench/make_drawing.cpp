// Writes a drawing of any size for measurements: qrs_make_drawing ENTITIES LAYERS VERSION OUTPUT
//
// The same arguments give the same bytes. VERSION is AC1009 or from AC1015 on. Every third layer is frozen; lines,
// circles, polylines, texts and block references alternate, every eighth carries xdata; about 150 bytes each.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

// Handles other records refer to; the rest are counted up behind them.
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
    Writer(const std::string& path, bool modern) : out_(path, std::ios::binary), modern_(modern) {}

    bool isModern() const { return modern_; }
    std::uint64_t nextHandle() const { return next_; }
    void setNextHandle(std::uint64_t next) { next_ = next; }

    void tag(int code, std::string_view value) {
        char line[16];
        const int length = std::snprintf(line, sizeof line, "%3d\n", code);
        buffer_.append(line, static_cast<std::size_t>(length));
        buffer_ += value;
        buffer_ += '\n';
        if (buffer_.size() > (std::size_t{1} << 20)) flush();
    }
    void tag(int code, long long value) { tag(code, std::string_view(std::to_string(value))); }
    void real(int code, double value) {
        char text[40];
        tag(code, {text, static_cast<std::size_t>(std::snprintf(text, sizeof text, "%.3f", value))});
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
    void flush() {
        out_.write(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
        buffer_.clear();
    }

    std::ofstream out_;
    std::string buffer_;
    bool modern_;
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

void classes(Writer& out) {
    out.section("CLASSES");
    out.tag(0, "CLASS");
    out.tag(1, "ACDBDICTIONARYWDFLT");
    out.tag(2, "AcDbDictionaryWithDefault");
    out.tag(3, "ObjectDBX Classes");
    out.tag(90, 0LL);
    out.tag(91, 0LL);
    out.tag(280, 0LL);
    out.tag(281, 0LL);
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

void otherTables(Writer& out) {
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
    owner = table(out, "APPID", 2);
    for (const std::string_view name : {"ACAD", "QRS_BENCH"}) {
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

void body(Writer& out, unsigned entities, unsigned layerCount) {
    if (out.isModern()) classes(out);
    out.section("TABLES");
    lineTypes(out);
    layers(out, layerCount);
    otherTables(out);
    if (out.isModern()) blockRecords(out);
    out.endSection();
    blocks(out);
    out.section("ENTITIES");
    std::vector<std::string> names;
    for (unsigned number = 1; number <= layerCount; ++number)
        names.push_back(layerName(number));
    if (names.empty()) names.emplace_back("0");
    Numbers numbers;
    for (unsigned number = 0; number < entities; ++number)
        entity(out, number, names, numbers);
    out.endSection();
    if (out.isModern()) objects(out);
    out.tag(0, "EOF");
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 5) {
        std::fprintf(stderr, "usage: qrs_make_drawing ENTITIES LAYERS VERSION OUTPUT\n");
        return 2;
    }
    const auto entities = static_cast<unsigned>(std::strtoul(arguments[1], nullptr, 10));
    const auto layerCount = static_cast<unsigned>(std::strtoul(arguments[2], nullptr, 10));
    const std::string version = arguments[3];
    if (version != "AC1009" && version < "AC1015") {
        std::fprintf(stderr, "qrs_make_drawing: VERSION must be AC1009 or from AC1015 on\n");
        return 2;
    }
    Writer out(arguments[4], version != "AC1009");
    // Every record takes at most one handle, the vertices of a polyline one each.
    header(out, version, kFirstFree + 1000 + layerCount + std::uint64_t{entities} * 5);
    body(out, entities, layerCount);
    if (!out.finish()) {
        std::fprintf(stderr, "qrs_make_drawing: cannot write %s\n", arguments[4]);
        return 1;
    }
    return 0;
}
