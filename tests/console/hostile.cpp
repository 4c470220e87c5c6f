// One generator for each way in which a file can ask for too much.
#include "hostile.h"

#include <cstddef>
#include <cstdio>
#include <functional>
#include <initializer_list>

#include "host/dxf/codeform.h"

namespace {

struct Tag {
    int code;
    std::string value;
};
std::string tags(std::initializer_list<Tag> list) {
    std::string text;
    for (const Tag& tag : list)
        text += std::to_string(tag.code) + "\n" + tag.value + "\n";
    return text;
}
std::string hex(int number) {
    char text[16];
    std::snprintf(text, sizeof text, "%X", static_cast<unsigned>(number));
    return text;
}
// As often as fits: what one makes of 0, 1, 2 ...
std::string many(const std::function<std::string(int)>& one, std::size_t most = kMegabyte) {
    std::string text;
    for (int i = 0;; ++i) {
        const std::string next = one(i);
        if (text.size() + next.size() > most) return text;
        text += next;
    }
}
std::string repeated(const std::string& one, std::size_t most = kMegabyte) {
    return many([&](int) { return one; }, most);
}

constexpr int kFirst = 0x100000;  // handles that nothing else has

std::string layer(const std::string& handle, const std::string& name) {
    return tags({{0, "LAYER"}, {5, handle}, {2, name}, {70, "0"}, {62, "7"}, {6, "CONTINUOUS"}});
}
std::string line(const std::string& handle, const std::string& further = "") {
    return tags({{0, "LINE"}, {5, handle}, {8, "0"}, {10, "0"}, {20, "0"}, {11, "1"}, {21, "1"}}) + further;
}
std::string insert(const std::string& handle, const std::string& name, const std::string& further = "") {
    return tags({{0, "INSERT"}, {5, handle}, {8, "0"}, {2, name}, {10, "0"}, {20, "0"}}) + further;
}
std::string block(int handle, const std::string& name, const std::string& entities, const std::string& path = "") {
    return tags({{0, "BLOCK"},
                 {5, hex(handle)},
                 {8, "0"},
                 {2, name},
                 {70, path.empty() ? "0" : "4"},
                 {10, "0"},
                 {20, "0"}}) +
           (path.empty() ? "" : tags({{1, path}})) + entities + tags({{0, "ENDBLK"}, {5, hex(handle + 1)}, {8, "0"}});
}
std::string section(const char* name, const std::string& content) {
    return tags({{0, "SECTION"}, {2, name}}) + content + tags({{0, "ENDSEC"}});
}

const std::string kLinetype =
    tags({{0, "TABLE"}, {2, "LTYPE"}, {5, "5"},   {70, "1"}, {0, "LTYPE"}, {5, "14"}, {2, "D"},
          {70, "0"},    {3, ""},      {72, "65"}, {73, "2"}, {40, "6"},    {49, "1"}, {74, "2"},
          {75, "0"},    {340, "0"},   {46, "5"},  {9, "W"},  {49, "-5"},   {74, "0"}, {0, "ENDTAB"}});
struct Parts {
    std::string entities = line("90");
    std::string blocks;
    std::string objects;
    std::string layers;
};
std::string drawing(const Parts& parts) {
    return section("HEADER", tags({{9, "$ACADVER"}, {1, "AC1015"}, {9, "$HANDSEED"}, {5, "FFFFFF"}})) +
           section("TABLES", kLinetype + tags({{0, "TABLE"}, {2, "LAYER"}, {5, "2"}, {70, "1"}}) + layer("10", "0") +
                                 parts.layers + tags({{0, "ENDTAB"}})) +
           section("BLOCKS", parts.blocks) + section("ENTITIES", parts.entities) + section("OBJECTS", parts.objects) +
           tags({{0, "EOF"}});
}
std::string ofEntities(const std::string& entities) {
    Parts parts;
    parts.entities = entities;
    return drawing(parts);
}
std::string ofBlocks(const std::string& blocks, const std::string& entities) {
    Parts parts;
    parts.blocks = blocks;
    parts.entities = entities;
    return drawing(parts);
}
std::string ofObjects(const std::string& objects) {
    Parts parts;
    parts.objects = objects;
    return drawing(parts);
}
std::string ofLayers(const std::string& layers) {
    Parts parts;
    parts.layers = layers;
    return drawing(parts);
}

// Each block shows the next one so many times.
std::string nestedBlocks(int count, int times) {
    std::string blocks;
    for (int i = 0; i < count; ++i) {
        std::string entities;
        for (int k = 0; k < times; ++k)
            entities += insert(hex(kFirst + 10 * i + 2 + k), "B" + std::to_string(i + 1));
        blocks +=
            block(kFirst + 10 * i, "B" + std::to_string(i), i + 1 < count ? entities : line(hex(kFirst + 10 * i + 2)));
    }
    return blocks;
}

const std::string kHatch =
    tags({{0, "HATCH"}, {5, "601"}, {8, "0"},    {2, "X"},  {70, "0"}, {71, "0"},    {91, "1"},    {92, "2"},
          {72, "0"},    {73, "1"},  {93, "4"},   {10, "0"}, {20, "0"}, {10, "1e9"},  {20, "0"},    {10, "1e9"},
          {20, "1e9"},  {10, "0"},  {20, "1e9"}, {97, "0"}, {75, "0"}, {76, "1"},    {52, "0"},    {41, "1e-9"},
          {77, "0"},    {78, "1"},  {53, "45"},  {43, "0"}, {44, "0"}, {45, "1e-9"}, {46, "1e-9"}, {79, "0"}});
// Dashes and lines over most of a page, as close as they can still be seen.
const std::string kPattern =
    tags({{0, "HATCH"}, {8, "0"},  {2, "X"},     {70, "0"},   {71, "0"},    {91, "1"}, {92, "2"},  {72, "0"},
          {73, "1"},    {93, "3"}, {10, "0"},    {20, "0"},   {10, "1000"}, {20, "0"}, {10, "0"},  {20, "1000"},
          {97, "0"},    {75, "0"}, {76, "1"},    {52, "0"},   {41, "1"},    {77, "0"}, {78, "2"},  {53, "45"},
          {43, "0"},    {44, "0"}, {45, "-1.5"}, {46, "1.5"}, {79, "2"},    {49, "1"}, {49, "-1"}, {53, "30"},
          {43, "0"},    {44, "0"}, {45, "-1.5"}, {46, "1.5"}, {79, "0"}});
const std::string kCounts =
    tags({{0, "LWPOLYLINE"}, {5, "600"}, {8, "0"}, {90, "2147483647"}, {70, "0"}, {10, "0"}, {20, "0"}}) +
    tags({{0, "HATCH"}, {5, "601"}, {8, "0"}, {91, "2147483647"}, {92, "1"}, {93, "2000000000"}}) +
    tags({{0, "SPLINE"},
          {5, "602"},
          {8, "0"},
          {71, "30000"},
          {72, "2000000000"},
          {73, "2000000000"},
          {74, "2000000000"}}) +
    tags({{0, "MTEXT"}, {5, "603"}, {8, "0"}, {10, "0"}, {20, "0"}, {40, "1e300"}, {41, "1e-300"}, {1, "x"}}) +
    tags({{0, "POLYLINE"}, {5, "604"}, {8, "0"}, {66, "1"}, {70, "16"}, {71, "32767"}, {72, "32767"}, {73, "32767"}}) +
    tags({{0, "SEQEND"}, {5, "605"}, {8, "0"}});

}  // namespace

std::vector<HostileFile> hostileDrawings() {
    const auto numbered = [](int i) { return hex(kFirst + i); };
    return {
        // Wide.
        {"layers", ofLayers(many([&](int i) { return layer(numbered(i), "L" + std::to_string(i)); }))},
        {"layers of one name", ofLayers(many([&](int i) { return layer(numbered(i), "L"); })), "the table says"},
        {"layers of one handle", ofLayers(many([&](int i) { return layer("20", "L" + std::to_string(i)); })),
         "handles given twice"},
        {"entities of one handle", ofEntities(many([](int) { return line("20"); })), "handles given twice"},
        {"entities", ofEntities(many([](int) {
             return tags({{0, "POINT"}, {8, "0"}});
         }))},
        {"entities on layers that are not", ofEntities(many([&](int i) {
             return tags({{0, "POINT"}, {5, numbered(i)}, {8, "L" + std::to_string(i)}});
         }))},
        {"types", ofEntities(many([&](int i) {
             return tags({{0, "T" + std::to_string(i)}, {8, "0"}});
         }))},
        {"tags", ofEntities(line("600", repeated(tags({{10, "0"}, {20, "0"}}))))},
        {"applications", ofEntities(line("600", many([](int i) {
                                             return tags({{1001, "A" + std::to_string(i)}});
                                         })))},
        {"line", ofEntities(tags({{0, "TEXT"}, {5, "600"}, {8, "0"}, {1, std::string(kMegabyte, 'x')}}))},
        {"escapes", ofEntities(tags({{0, "TEXT"}, {5, "600"}, {8, "0"}, {1, repeated("\\U+4E00")}}))},
        {"vertices",
         ofEntities(tags({{0, "POLYLINE"}, {5, "600"}, {8, "0"}, {66, "1"}, {70, "16"}, {71, "32000"}, {72, "32000"}}) +
                    many([](int i) {
                        return tags({{0, "VERTEX"}, {8, "0"}, {10, std::to_string(i)}, {20, "0"}});
                    })),
         "SEQEND"},
        {"vertices of zigzags", ofEntities(tags({{0, "LWPOLYLINE"}, {5, "600"}, {8, "0"}, {70, "1"}}) + many([](int i) {
                                               return tags({{10, std::to_string(i % 2)}, {20, "0"}, {42, "1e9"}});
                                           }))},
        {"attributes",
         ofBlocks(block(0x700, "A", line("702")),
                  insert("600", "A", tags({{66, "1"}})) + many([](int i) {
                      return tags({{0, "ATTRIB"}, {8, "0"}, {2, std::to_string(i)}, {1, "x"}});
                  })),
         "SEQEND"},
        // Deep.
        {"brackets of xdata", ofEntities(line("600", tags({{1001, "APP"}}) + repeated(tags({{1002, "{"}}))))},
        {"brackets of groups", ofEntities(line("600", repeated(tags({{102, "{A"}}))))},
        {"sections", repeated(tags({{0, "SECTION"}, {2, "ENTITIES"}})), "EOF"},
        {"nested blocks", ofBlocks(nestedBlocks(6000, 1), insert("90", "B0"))},
        {"blocks that double", ofBlocks(nestedBlocks(60, 2), insert("90", "B0"))},
        {"blocks in arrays", ofBlocks(block(0x700, "A", line("702")),
                                      insert("90", "A", tags({{70, "32000"}, {71, "32000"}, {44, "1"}, {45, "1"}})))},
        {"owners in a chain", ofObjects(many([&](int i) {
             return tags(
                 {{0, "DICTIONARY"}, {5, numbered(i)}, {330, numbered(i - 1)}, {3, "A"}, {360, numbered(i + 1)}});
         })),
         "pointers to nothing"},
        {"leaders in a chain", ofEntities(many([&](int i) {
             return tags({{0, "LEADER"}, {5, numbered(i)}, {8, "0"}, {340, numbered(i + 1)}});
         })),
         "points to"},
        {"reactors", ofEntities(many([&](int i) {
             return tags({{0, "POINT"},
                          {5, numbered(i)},
                          {102, "{ACAD_REACTORS"},
                          {330, numbered(i * 7919 % 9000)},
                          {102, "}"},
                          {8, "0"}});
         }))},
        // Cyclic.
        {"cyclic blocks",
         ofBlocks(block(0x700, "A", insert("702", "B")) + block(0x710, "B", insert("712", "A")), insert("90", "A")),
         "handle 712: the block A lies in itself"},
        {"cyclic owners", ofObjects(tags({{0, "DICTIONARY"}, {5, "500"}, {330, "501"}, {3, "A"}, {350, "501"}}) +
                                    tags({{0, "DICTIONARY"}, {5, "501"}, {330, "500"}, {3, "B"}, {350, "500"}}))},
        {"cyclic groups", ofObjects(many([&](int i) {
             return tags({{0, "GROUP"}, {5, numbered(i)}, {340, numbered((i + 1) % 9000)}});
         }))},
        {"a reference to itself", ofBlocks(block(0x700, "X", "", "hostile.dxf"), insert("90", "X"))},
        {"references",
         ofBlocks(many([&](int i) { return block(kFirst + 2 * i, "X" + std::to_string(i), "", "hostile.dxf"); },
                       kMegabyte * 3 / 10),
                  insert("90", "X7"))},
        // Counts and numbers.
        {"counts", ofEntities(kCounts), "2147483647"},
        {"lines of a hatch", ofEntities(kHatch)},
        // For pictures: little that stands for much.
        {"lines in arrays",
         ofBlocks(
             block(0x700, "A", tags({{0, "LWPOLYLINE"}, {5, "702"}, {8, "0"}}) + many([](int i) {
                                   return tags({{10, std::to_string(i * 7919 % 997)}, {20, std::to_string(i % 991)}});
                               })),
             insert("90", "A", tags({{70, "32000"}, {71, "32000"}, {44, "1e-3"}, {45, "1e-3"}})))},
        {"texts in arrays", ofBlocks(block(0x700, "A",
                                           tags({{0, "MTEXT"},
                                                 {5, "702"},
                                                 {8, "0"},
                                                 {40, "100"},
                                                 {41, "900"},
                                                 {1, repeated("{\\H2x;\\S1/2;W} ", 20000)}})),
                                     insert("90", "A", tags({{70, "32000"}, {71, "32000"}, {44, "1"}, {45, "1"}})))},
        {"viewports", ofEntities(many([&](int i) {
             return line(numbered(2 * i)) + tags({{0, "VIEWPORT"},
                                                  {5, numbered(2 * i + 1)},
                                                  {67, "1"},
                                                  {8, "0"},
                                                  {10, "5"},
                                                  {20, "5"},
                                                  {40, "10"},
                                                  {41, "10"},
                                                  {68, "2"},
                                                  {69, std::to_string(i + 1)},
                                                  {45, "10"}});
         }))},
        {"patterns", ofEntities(repeated(kPattern))},
        {"dashes",
         ofBlocks(
             block(0x700, "A", tags({{0, "LINE"}, {5, "702"}, {8, "0"}, {6, "D"}, {10, "0"}, {20, "0"}, {11, "1e4"}})),
             repeated(insert("0", "A"), kMegabyte / 2))},
        {"areas", ofEntities(many([](int i) {
             return tags({{0, "SOLID"},
                          {8, "0"},
                          {10, "0"},
                          {20, "0"},
                          {11, "1000"},
                          {21, std::to_string(i % 7)},
                          {12, "0"},
                          {22, "1000"},
                          {13, "1000"},
                          {23, "1000"}});
         }))},
        {"numbers",
         ofEntities(
             tags({{0, "CIRCLE"}, {5, "600"}, {8, "0"}, {10, "1e308"}, {20, "-1e308"}, {40, "1e308"}}) +
             tags({{0, "ELLIPSE"},
                   {5, "601"},
                   {8, "0"},
                   {10, "nan"},
                   {20, "inf"},
                   {11, "1e308"},
                   {21, "1e308"},
                   {40, "1e-308"},
                   {41, "-1e308"},
                   {42, "1e308"}}) +
             tags({{0, "ARC"}, {5, "602"}, {8, "0"}, {10, "0"}, {20, "0"}, {40, "1"}, {50, "-1e308"}, {51, "1e308"}}))},
        // No drawings.
        {"zeros", std::string(kMegabyte, '\0'), "not a DXF file"},
        {"empty lines", std::string(kMegabyte, '\n'), "not a DXF file"},
        {"binary", std::string(qrs::dxf::kBinarySignature) + std::string(kMegabyte, '\0'), "hostile.dxf"},
        {"binary chunks", std::string(qrs::dxf::kBinarySignature) + repeated(std::string("\x36\x01\xFF", 3)),
         "hostile.dxf"},
    };
}

std::vector<HostileFile> hostileStandards() {
    const auto standard = [](const std::string& content) { return "<Morvel>" + content + "</Morvel>"; };
    const auto systems = [&](const std::string& pipes) {
        return standard("<PipeSystem><PipeGroup Name='G'>" + pipes + "</PipeGroup></PipeSystem>");
    };
    const auto layerOf = [](const std::string& name) {
        return "<Layer LayerType='T'><LayerName>" + name + "</LayerName></Layer>";
    };
    std::string bomb = "<!DOCTYPE Morvel [<!ENTITY a0 \"ha\">";
    for (int i = 1; i < 60; ++i) {
        const std::string before = "&a" + std::to_string(i - 1) + ";";
        bomb += "<!ENTITY a" + std::to_string(i) + " \"" + before + before + before + "\">";
    }
    return {
        {"elements in elements", standard(repeated("<x>")), "line 1"},
        {"layers in layers",
         systems("<Pipe>" + repeated("<Layer>", kMegabyte / 3) + repeated("</Layer>", kMegabyte / 3) + "</Pipe>"),
         "line 1"},
        {"systems", systems(many([](int i) {
             return "<Pipe><BaseInfo><PipeName>P" + std::to_string(i) + "</PipeName></BaseInfo></Pipe>";
         }))},
        {"systems of one name", systems(repeated("<Pipe><BaseInfo><PipeName>P</PipeName></BaseInfo></Pipe>"))},
        {"layers", systems("<Pipe>" + many([&](int i) { return layerOf("L" + std::to_string(i)); }) + "</Pipe>")},
        {"attributes", standard("<x " + many([](int i) { return "a" + std::to_string(i) + "='' "; }) + "/>")},
        {"groups",
         standard("<PipeSystem>" + many([](int i) { return "<PipeGroup Name='G" + std::to_string(i) + "'/>"; }) +
                  "</PipeSystem>")},
        {"maps", systems("<Pipe><SysMap>" + many([](int i) {
                             return "<MapItem><SrcItem>" + std::to_string(i) + "</SrcItem><DesItem>" +
                                    std::to_string(i + 1) + "</DesItem></MapItem>";
                         }) +
                         "</SysMap></Pipe>")},
        {"entities", bomb + "]>" + systems("<Pipe><BaseInfo><PipeName>&a59;</PipeName></BaseInfo></Pipe>")},
        {"comments", standard(repeated("<!--")), "line 1"},
        {"references", systems("<Pipe><BaseInfo><PipeName>" + repeated("&#x4E00;") + "</PipeName></BaseInfo></Pipe>")},
        {"opened only", repeated("<"), "line 1"},
    };
}

std::vector<HostileFile> hostileTables() {
    // Header of a table: how many records, how long the header and a record.
    const auto table = [](unsigned records, unsigned header, unsigned record, const std::string& fields) {
        std::string bytes = "\x03\x7E\x01\x01";
        for (const auto& [value, size] : {std::pair(records, 4), std::pair(header, 2), std::pair(record, 2)})
            for (int i = 0; i < size; ++i)
                bytes += static_cast<char>(value >> 8 * i);
        bytes.resize(32, '\0');
        return bytes + fields;
    };
    const auto field = [](std::string name, char type, int length) {
        name.resize(32, '\0');
        name[11] = type;
        name[16] = static_cast<char>(length);
        return name;
    };
    const std::string names = field("NAME", 'C', 10) + field("CONTENT", 'C', 20) + "\r";
    // Names of all tables, each of which is a memo, and the same one.
    std::string memos;
    for (const char* name : {"NAME", "GC", "TYPEVALUE"})
        memos += field(name, 'M', 10);
    std::string shared = table(kMegabyte / 74, 161, 37, memos + field("TYPENUMBER", 'N', 6) + "\r") +
                         repeated("          1         1         1    40", kMegabyte / 2);
    shared[0] = '\x83';
    return {
        {"four thousand million records", table(0xFFFFFFFF, 97, 31, names) + std::string(310, ' '), "is damaged"},
        {"records of nothing", table(0xFFFFFFFF, 97, 0, names), "is damaged"},
        {"a header longer than the file", table(1, 0xFFFF, 31, names), "is damaged"},
        {"rows", table(32000, 97, 31, names) + repeated(" X         1,-1                ")},
        {"a memo of all records", shared, "", std::string(kMegabyte / 2, 'x')},
        {"fields", table(1, 65, 31, repeated(field("F", 'C', 1), 60000) + "\r"), "is damaged"},
        {"nothing", "", "is damaged"},
    };
}

std::vector<HostileFile> hostileMappings() {
    return {
        {"rows", many([](int i) { return "L" + std::to_string(i) + ",X,layer\n"; })},
        {"stars", repeated("*a*b*c*d*e*f*g*h,X,layer\n")},
        {"a pattern", repeated("*a") + ",X,layer\n"},
        {"accepted findings", many([](int i) { return "layer-foreign,*" + std::to_string(i) + "*a*,agreed\n"; }),
         "1: \"agreed\" is none of"},
        {"severities", repeated("layer-absent,error\n"), "1: a row is"},
        {"a quote", "\"" + repeated("a\n"), "1: a quote is not closed"},
        {"cells", repeated(","), "1: a row is"},
        {"zeros", std::string(kMegabyte, '\0'), "1: a row is"},
    };
}

std::vector<HostileFile> hostileSettings() {
    return {
        {"sections", many([](int i) { return "[S" + std::to_string(i) + "]\n"; })},
        {"values", "[S]\n" + many([](int i) { return "v" + std::to_string(i) + "=i:1\n"; })},
        {"a line", "[S]\nv=s:" + std::string(kMegabyte, 'x') + "\n"},
        {"escapes", "[S]\nv=s:" + repeated("\\u{10FFFF}") + "\n"},
        {"a key", "[" + repeated("a\\") + "]\n"},
        {"zeros", std::string(kMegabyte, '\0'), "control character"},
        {"values without a section", repeated("v=i:1\n"), "before the first section"},
    };
}

std::vector<HostileFile> hostileScripts() {
    return {
        {"brackets", "SELECT\n" + std::string(kMegabyte, '(') + "\n", "too many parentheses"},
        {"brackets over lines", "SELECT\n" + repeated("(\n") + "\n", "too many parentheses"},
        {"conditions", "SELECT\n(ssget \"X\" '(" + repeated("(8 . \"A*\")") + "))\n\n"},
        {"operators", "SELECT\n(ssget \"X\" '(" + repeated("(-4 . \"<NOT\")", kMegabyte / 2) + "))\n\n",
         "too many groups"},
        {"stars", "-LAYER\n?\n" + repeated("*a") + "\n\n"},
        {"patterns", "-LAYER\n?\n" + repeated("*a,") + "\n\n"},
        {"sets", "-LAYER\n?\n" + repeated("[~a-z]*") + "\n\n"},
        {"points",
         "SELECT\nF\n" +
             many([](int i) { return std::to_string(i % 7) + "," + std::to_string(i) + "\n"; }, kMegabyte * 3 / 10) +
             "\n\n"},
        {"corners", "SELECT\nWP\n" +
                        many([](int i) { return std::to_string(i * 7919 % 997) + "," + std::to_string(i) + "\n"; },
                             kMegabyte / 10) +
                        "\n\n"},
        {"nonsense", many([](int i) { return "X" + std::to_string(i) + "\n"; }), "X0"},
        {"a word", std::string(kMegabyte, 'x') + "\n", "xxx"},
        {"zeros", std::string(kMegabyte, '\0'), "hostile"},
    };
}
