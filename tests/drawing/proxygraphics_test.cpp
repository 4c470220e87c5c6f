// Pictures that drawing files carry: what is written is read again, in its place in the file, and what comes from
// elsewhere does no harm.
#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "../dxftext.h"
#include "host/drawing/proxygraphics.h"

namespace qrs::host::test {
namespace {

using Kind = ProxyShape::Kind;

std::unique_ptr<dxf::Drawing> drawingOf(const std::string& version, const std::string& entity) {
    platform::Error error;
    auto drawing = dxf::Drawing::fromBytes(
        dxfText("0=SECTION;2=HEADER;9=$ACADVER;1=" + version +
                ";9=$DWGCODEPAGE;3=ANSI_936;0=ENDSEC;0=SECTION;2=ENTITIES;" + entity + "0=ENDSEC;0=EOF"),
        "test", error);
    EXPECT_NE(drawing, nullptr) << error.message;
    return drawing;
}

const char* const kEntity =
    "0=QRS_PIPE;5=A1;100=AcDbEntity;8=0;62=3;102={X;310=FF;102=};100=TDbPipe;310=AB;1001=X;1000=y;";

ProxyShape shape(Kind kind, std::vector<ProxyPoint> points, ProxyTraits traits = {}) {
    ProxyShape shape;
    shape.kind = kind;
    shape.points = std::move(points);
    shape.traits = traits;
    return shape;
}

// One of each kind, with traits that come and go.
std::vector<ProxyShape> shapes() {
    ProxyTraits heavy;
    heavy.lineWeight = 70;
    ProxyTraits filled = heavy;
    filled.isFilled = true;
    filled.rgb = 0x102030;
    ProxyTraits layered = heavy;
    layered.colorIndex = 1;
    layered.layer = 4;
    layered.linetype = 2;
    layered.linetypeScale = 0.5;
    std::vector<ProxyShape> shapes = {
        shape(Kind::Polyline, {{1, 2, 3}, {4, 5, 6}, {-7.5, 1e9, 0}}),
        shape(Kind::Circle, {{10, 20, 0}}, heavy),
        shape(Kind::Polygon, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, filled),
        shape(Kind::Arc, {{5, 5, 1}}, layered),
        shape(Kind::Text, {{9, 8, 7}}, layered),
        shape(Kind::Ray, {{0, 0, 0}, {1, 1, 0}}, layered),
        shape(Kind::Line, {{0, 0, 0}, {1, -1, 0}}, layered),
    };
    shapes[1].radius = 2.5;
    shapes[3].radius = 4.0;
    shapes[3].normal = {0, 0, -1};
    shapes[3].direction = {0, 1, 0};
    shapes[3].sweep = 1.25;
    shapes[4].text = L"\u6c61\u6c34 WL-1";
    shapes[4].height = 350.0;
    shapes[4].widthFactor = 0.7;
    shapes[4].direction = {0, 1, 0};
    return shapes;
}

std::vector<ProxyShape> readAll(const dxf::Drawing& drawing, std::string_view picture) {
    std::vector<ProxyShape> read;
    readProxyGraphics(drawing, picture, [&](const ProxyShape& one) {
        read.push_back(one);
        return true;
    });
    return read;
}

std::string pictureOf(const dxf::Drawing& drawing, const std::vector<ProxyShape>& shapes) {
    ProxyGraphicsWriter writer(drawing);
    for (const ProxyShape& one : shapes)
        writer.add(one);
    return writer.picture();
}

TEST(ProxyGraphics, AreReadAsTheyWereWritten) {
    for (const char* version : {"AC1015", "AC1032"}) {
        const auto drawing = drawingOf(version, kEntity);
        const dxf::RecordId id = drawing->findHandle(0xA1);
        const std::vector<ProxyShape> written = shapes();
        ASSERT_TRUE(setProxyGraphics(*drawing, id, pictureOf(*drawing, written)));
        const std::vector<ProxyShape> read = readAll(*drawing, proxyGraphicsOf(*drawing, id));
        ASSERT_EQ(read.size(), written.size());
        for (std::size_t i = 0; i < read.size(); ++i) {
            SCOPED_TRACE(i);
            EXPECT_EQ(read[i].kind, written[i].kind);
            EXPECT_EQ(read[i].points, written[i].points);
            EXPECT_EQ(read[i].normal, written[i].normal);
            EXPECT_EQ(read[i].direction, written[i].direction);
            EXPECT_EQ(read[i].radius, written[i].radius);
            EXPECT_EQ(read[i].sweep, written[i].sweep);
            EXPECT_EQ(read[i].text, written[i].text);
            EXPECT_EQ(read[i].height, written[i].height);
            EXPECT_EQ(read[i].widthFactor, written[i].widthFactor);
            EXPECT_EQ(read[i].traits.isFilled, written[i].traits.isFilled);
            EXPECT_EQ(read[i].traits.rgb, written[i].traits.rgb);
            EXPECT_EQ(read[i].traits.lineWeight, written[i].traits.lineWeight);
        }
        EXPECT_TRUE(read[4].traits == written[4].traits);
    }
}

// The bytes of a circle as the format lays them out, in the section all entities share and nowhere else.
TEST(ProxyGraphics, StandInTheirPlaceInTheFile) {
    ProxyShape circle = shape(Kind::Circle, {{1, 0, 0}});
    circle.radius = 2.0;
    const std::string zero(16, '0');
    const std::string circleHex = "48000000010000004000000002000000000000000000F03F" + zero + zero +
                                  "0000000000000040" + zero + zero + "000000000000F03F";
    const auto entityWith = [](const std::string& tags) {
        return "0=QRS_PIPE;5=A1;100=AcDbEntity;8=0;62=3;102={X;310=FF;102=};" + tags +
               "100=TDbPipe;310=AB;1001=X;1000=y;";
    };
    for (const char* version : {"AC1015", "AC1021", "AC1024"}) {
        const auto drawing = drawingOf(version, kEntity);
        const dxf::RecordId id = drawing->findHandle(0xA1);
        ASSERT_TRUE(setProxyGraphics(*drawing, id, pictureOf(*drawing, {circle})));
        const std::string code = version == std::string("AC1024") ? "160" : "92";
        EXPECT_EQ(drawing->toBytes(), drawingOf(version, entityWith(code + "=72;310=" + circleHex + ";"))->toBytes());
        // The right bytes under a wrong size are written anew.
        dxf::Tag size;
        ASSERT_TRUE(drawing->findTag(id, std::stoi(code), size));
        drawing->setValue(id, size, "71");
        ASSERT_TRUE(setProxyGraphics(*drawing, id, pictureOf(*drawing, {circle})));
        EXPECT_EQ(drawing->toBytes(), drawingOf(version, entityWith(code + "=72;310=" + circleHex + ";"))->toBytes());
        // Of more than 127 bytes each chunk but the last has so many; then a shorter one takes its place, then none.
        ASSERT_TRUE(setProxyGraphics(*drawing, id, pictureOf(*drawing, {circle, circle})));
        dxf::Tag first;
        dxf::Tag second;
        ASSERT_TRUE(drawing->findTag(id, 310, first) && drawing->findTag(id, 310, second, 1));
        EXPECT_EQ(first.value.size(), 254U);
        EXPECT_EQ(second.value.size(), 18U);
        ASSERT_TRUE(setProxyGraphics(*drawing, id, ""));
        EXPECT_EQ(drawing->toBytes(), drawingOf(version, kEntity)->toBytes());
    }
    for (const auto& [version, entity] : {std::pair("AC1009", kEntity), std::pair("AC1015", "0=LINE;5=A1;8=0;")}) {
        const auto drawing = drawingOf(version, entity);
        EXPECT_FALSE(setProxyGraphics(*drawing, drawing->findHandle(0xA1), pictureOf(*drawing, {circle})));
        EXPECT_FALSE(drawing->isModified());
    }
}

TEST(ProxyGraphics, OfObjectsThatNobodyKnewAreFoundToo) {
    const auto drawing = drawingOf("AC1024",
                                   "0=ACAD_PROXY_ENTITY;5=A1;100=AcDbEntity;8=0;100=AcDbProxyEntity;90=498;160=3;"
                                   "310=0102;310=03;161=8;310=FF;0=QRS_PIPE;5=A2;100=AcDbEntity;8=0;160=1;310=XY;"
                                   "100=TDbPipe;160=1;310=01;");
    EXPECT_EQ(proxyGraphicsOf(*drawing, drawing->findHandle(0xA1)), "\1\2\3");
    EXPECT_EQ(proxyGraphicsOf(*drawing, drawing->findHandle(0xA2)), "");
}

std::string bytesOf(std::initializer_list<std::uint32_t> numbers) {
    std::string bytes;
    for (const std::uint32_t number : numbers)
        for (int i = 0; i < 4; ++i)
            bytes += static_cast<char>(number >> (8 * i) & 0xFF);
    return bytes;
}

// Never more points than the data could hold, whatever it says.
TEST(ProxyGraphics, OfDamagedDataDoNoHarm) {
    const auto drawing = drawingOf("AC1024", kEntity);
    const std::string whole = pictureOf(*drawing, shapes());
    const auto check = [&](const std::string& picture) {
        std::size_t points = 0;
        for (const ProxyShape& one : readAll(*drawing, picture))
            points += one.points.size();
        EXPECT_LE(points, picture.size() / 4);
    };
    for (std::size_t i = 0; i < whole.size(); ++i) {
        check(whole.substr(0, i));
        for (const char value : {'\0', '\xFF', '\x7F', '\x08'}) {
            std::string damaged = whole;
            damaged[i] = value;
            check(damaged);
        }
    }
    EXPECT_EQ(readAll(*drawing, whole.substr(0, whole.size() - 1)).size(), shapes().size() - 1);
    // Counts of points, of a mesh, and of a shell's corners that nothing stands for; commands without a size.
    for (const std::string& command :
         {bytesOf({12, 6, 0xFFFFFFFF}), bytesOf({16, 8, 0x10000, 0x10000}), bytesOf({20, 9, 0, 0xFFFFFFFF, 0x80000000}),
          bytesOf({20, 9, 0, 4, 3}), bytesOf({0, 6}), bytesOf({7, 6})})
        EXPECT_TRUE(readAll(*drawing, bytesOf({1000, 1}) + command).empty());
    // Matrices within each other end the picture where there are too many.
    std::string nested = bytesOf({0xFFFFFFFF, 1});
    for (int i = 0; i < 100; ++i)
        nested += bytesOf({136, 29}) + std::string(128, '\0') + pictureOf(*drawing, {shapes()[0]}).substr(8);
    EXPECT_EQ(readAll(*drawing, nested).size(), 64U);
}

}  // namespace
}  // namespace qrs::host::test
