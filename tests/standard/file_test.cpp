// The standard file: exact output, round trips, value forms, encodings, irregular and damaged files.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <sstream>

#include "../folder.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "qrs_pipewire.h"
#include "standard/standard.h"
#include "standard/text.h"
#include "standard/values.h"

using namespace qrs::standard;
namespace platform = qrs::platform;

namespace {

std::string format(const Standard& standard) {
    std::string bytes;
    platform::Error error;
    EXPECT_TRUE(formatStandard(standard, bytes, error)) << error.message;
    return bytes;
}

Standard parse(std::string_view bytes) {
    Standard standard;
    platform::Error error;
    EXPECT_TRUE(parseStandard(bytes, "test.qdsl", standard, error)) << error.message;
    return standard;
}

std::string refusal(std::string_view bytes) {
    Standard standard;
    platform::Error error;
    EXPECT_FALSE(parseStandard(bytes, "test.qdsl", standard, error));
    return error.message;
}

// A root around sections.
std::string file(const std::string& sections) {
    return "<Morvel>" + sections + "</Morvel>";
}

TEST(StandardFile, ShippedStandardComesBackByteForByte) {
    const std::string shipped = fileBytes(std::filesystem::path(QRS_SOURCE_DIR) / "data" / "pwx.qdsl");
    EXPECT_TRUE(builtinStandard() == shipped);
    const Standard standard = parse(shipped);
    EXPECT_TRUE(format(standard) == shipped);
    EXPECT_EQ(standard.textStyles.size(), 10u);
    ASSERT_EQ(standard.otherLayers.size(), 3u);
    EXPECT_EQ(standard.otherLayers[0]->GetLayerNum(), 46);
    // Shape fonts come with every editor, a typeface may be missing.
    for (const TextStyleNode& style : standard.textStyles) {
        EXPECT_EQ(style.ChineseFont.Right(4), L".shx");
        EXPECT_EQ(style.EnglishFont.Right(4), L".shx");
        EXPECT_EQ(style.WinFont, 0);
    }
    for (const auto& group : standard.groups) {
        std::set<CString> types;
        group->GetLayerTypes(types);
        for (const wchar_t* type : {L"管线", L"立管", L"扣弯", L"管径文字", L"阀门", L"文字", L"标注", L"设备",
                                    L"电动阀", L"喷头", L"消火栓", L"井"}) {
            EXPECT_EQ(types.count(type), 1u);
        }
        for (int i = 0; i < group->GetSystemNum(); ++i) {
            EXPECT_FALSE(group->FindPipeSystem(i)->Dim.IsEmpty());
            EXPECT_TRUE(group->CanRenameLayerName(group->FindPipeSystem(i)->PipeName,
                                                  group->FindPipeSystem(i)->FindLayerNode(0)->LayerName));
        }
    }
}

// The pipe library knows a pipe by the code of its system's name, the old or the current one: of all built-in systems
// there is one in the standard, and no two share a code.
TEST(StandardFile, ShippedSystemsHaveATypeCodeEach) {
    const Standard standard = parse(std::string(builtinStandard()));
    for (const auto& group : standard.groups)
        group->ConvertOldSysNameToCurrentName();
    std::map<int, CString> named;
    for (const auto& group : standard.groups) {
        std::vector<CString> systems;
        group->GetAllPipeSystemNames(systems);
        for (const CString& system : systems) {
            const int code = GetSysType(system.GetString());
            if (code == kCustomSysType) continue;
            EXPECT_TRUE(named.emplace(code, system).second)
                << platform::toUtf8(view(system)) << " has the code of " << platform::toUtf8(view(named[code]));
        }
    }
    for (int code = 1; GetSystypeName(code) != GetSystypeName(0); ++code)
        EXPECT_EQ(named.count(code), 1u) << platform::toUtf8(GetSystypeName(code));
    ClearPipeSystemNames();
}

TEST(StandardFile, WritesEveryElementInOrder) {
    const std::string small = fileBytes(std::filesystem::path(QRS_SOURCE_DIR) / "tests/standard/small.qdsl");
    Standard standard = parse(small);
    EXPECT_EQ(format(standard), small);
    // What is written as the file has it already.
    PipeNode& pipe = *standard.groups.at(0)->FindPipeSystem(L"J & <1>");
    EXPECT_EQ(pipe.LineWidth, 0.38);
    pipe.LineWidth = 0.375;
    pipe.SetLayerTypeMapping(L"同", L"同");
    pipe.FindLayerNode(0)->LineWeight = 36;
    standard.otherLayers.at(0)->AddMapping(L"柱", L"墙", true);
    standard.textStyles.at(0).WinFont = 2;
    EXPECT_EQ(format(standard), small);

    pipe.SetLayerTypeMapping(L"井文字", L"文字");  // the default again: no SysMap at all
    const std::string plain = format(standard);
    EXPECT_EQ(plain.find("SysMap"), std::string::npos);
    EXPECT_EQ(parse(plain).groups.at(0)->FindPipeSystem(0)->LayerTypeMap(), PipeNode().LayerTypeMap());
}

TEST(StandardFile, ValueForms) {
    for (const auto& [text, back] : std::vector<std::pair<const wchar_t*, const wchar_t*>>{{L"7", L"7"},
                                                                                           {L"256", L"256"},
                                                                                           {L"0", L"0"},
                                                                                           {L"255,0,0", L"255,0,0"},
                                                                                           {L"1,2", L"1,2,0"},
                                                                                           {L"1,2,3,4", L"1,2,3"},
                                                                                           {L"007", L"7"},
                                                                                           {L"", L"0"}}) {
        EXPECT_EQ(formatColor(parseColor(text)), back) << toUtf8(text);
    }
    EXPECT_TRUE(parseColor(L"256").isByLayer());
    for (const wchar_t* text : {L"ByLayer", L"ByBlock", L"257", L"99999999999999999999", L"-1", L"7 "}) {
        EXPECT_TRUE(parseColor(text) == AcCmColor()) << toUtf8(text);
    }
    AcCmColor foreground;
    foreground.setColorMethod(AcCmEntityColor::kForeground);
    EXPECT_EQ(formatColor(foreground), L"");

    for (const Adesk::Int32 code : {-3, -2, -1, 0,  5,  9,  13,  15,  18,  20,  25,  30,  35, 40,
                                    50, 53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211}) {
        const CString text = formatLineWeight(code);
        EXPECT_EQ(parseLineWeight(text), code);
        if (code >= 0) {
            EXPECT_EQ(text, formatReal(code / 100.0));
        }
    }
    EXPECT_EQ(formatLineWeight(-2), L"随块");
    EXPECT_EQ(formatLineWeight(parseLineWeight(L"0.36")), L"默认");
    EXPECT_EQ(parseLineWeight(L"0.350"), -3);

    EXPECT_EQ(formatReal(0.375), L"0.38");
    EXPECT_EQ(formatReal(-1e300).GetLength(), 305);
    EXPECT_EQ(parseReal(L" +1.5e1mm"), 15.0);
    EXPECT_EQ(parseReal(L"-.5e"), -0.5);
    EXPECT_EQ(parseReal(L"\t2E+1"), 20.0);
    EXPECT_EQ(parseReal(L"25e-1-"), 2.5);
    EXPECT_EQ(parseReal(L"5mm"), 5.0);
    EXPECT_EQ(parseReal(L"\x01"
                        L"5"),
              0.0);
    EXPECT_EQ(parseReal(L"x1"), 0.0);
    EXPECT_EQ(parseReal(L"1e999"), 0.0);
    EXPECT_EQ(parseInteger(L" -12.9"), -12);
    EXPECT_EQ(parseInteger(L"99999999999"), 2147483647);
    EXPECT_EQ(parseInteger(L"-99999999999"), -2147483647 - 1);
    EXPECT_EQ(parseInteger(L"是"), 0);
}

TEST(StandardFile, ReadsTheEncodingsPeopleSaveIn) {
    const std::wstring body = L"<Morvel><PipeSystem><PipeGroup Name=\"给水系统\" CanName=\"5\"/></PipeSystem></Morvel>";
    const auto expectRead = [](const std::string& bytes) {
        const Standard standard = parse(bytes);
        ASSERT_EQ(standard.groups.size(), 1u);
        EXPECT_EQ(standard.groups[0]->GroupName(), L"给水系统");
        EXPECT_TRUE(standard.groups[0]->CanRename());
    };
    expectRead(platform::toUtf8(body));
    expectRead("\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"utf-8\"?>" + platform::toUtf8(body));
    std::string gbk;
    ASSERT_TRUE(platform::encode(936, body, gbk));
    expectRead("<?xml version='1.0' encoding='GBK'?>" + gbk);
    expectRead("<?xml version=\"1.0\" encoding = \"gb2312\"?>\r\n" + gbk);
    std::string gb18030;
    const bool isKnown = platform::encode(54936, L"<!--\u0250\U00020087-->" + body, gb18030);
#if !defined(_WIN32)  // where not every system knows it
    ASSERT_TRUE(isKnown);
#endif
    if (isKnown) {
        expectRead("<?xml version='1.0' encoding='gb18030'?>" + gb18030);
    }
    for (const bool bigEndian : {false, true}) {
        std::string utf16;
        for (const wchar_t c : body) {
            const char low = static_cast<char>(c & 0xFF);
            const char high = static_cast<char>(c >> 8 & 0xFF);
            utf16 += bigEndian ? std::string{high, low} : std::string{low, high};
        }
        expectRead((bigEndian ? "\xFE\xFF" : "\xFF\xFE") + utf16);
        expectRead(utf16);
        EXPECT_NE(refusal((bigEndian ? "\xFE\xFF" : "\xFF\xFE") + utf16 + "x"), "");
    }
    // The mark wins over a declaration that an editor left as it was.
    expectRead("\xEF\xBB\xBF<?xml version='1.0' encoding='gbk'?>" + platform::toUtf8(body));
    // What lies between quotes without being a name is not told as one.
    EXPECT_EQ(refusal("<?xml encoding='a\nb'?>" + gbk).find('\n'), std::string::npos);
    EXPECT_NE(refusal("<Morvel>\n" + gbk.substr(8)).find("line 2"), std::string::npos);
    EXPECT_NE(refusal("<?xml version='1.0' encoding='Big5'?>\n" + gbk).find("unknown encoding big5"),
              std::string::npos);
    gbk.insert(0, "<?xml version='1.0' encoding='gbk'?>");
    for (std::size_t length = 0; length < gbk.size(); ++length)
        refusal(gbk.substr(0, length));
}

TEST(StandardFile, ReadsIrregularFiles) {
    const Standard standard = parse(file(
        "<OtherLayer><LayerGroup LayerType='其他'><lAYER><CanPlot>1</CanPlot><LayerKey>k</LayerKey>"
        "<x><LayerName>deep</LayerName></x><LayerName>late</LayerName></lAYER><Layer/>"
        "<anything><MapItem><SrcItem>a</SrcItem><DesItem>k</DesItem></MapItem></anything></LayerGroup></OtherLayer>"
        "<OtherLayer><LayerGroup LayerType='second'/></OtherLayer>"
        "<PipeSystem><Other/><PipeGroup><Pipe><Layer LayerType='标注'><LayerName>d<!-- -->im</LayerName></Layer>"
        "<SysMap><MapItem><SrcItem>管线文字</SrcItem><DesItem>标注</DesItem></MapItem></SysMap>"
        "<BaseInfo><CanDel>2</CanDel><VPipeRaidus1> </VPipeRaidus1><VPipeRaidus2></VPipeRaidus2>"
        "<PipeName> J </PipeName></BaseInfo><layer LayerType='no'/></Pipe></PipeGroup></PipeSystem>"
        "<TextStyleSetting><TextStyleSet><TextStyle Key='k'/></TextStyleSet></TextStyleSetting>"));
    ASSERT_EQ(standard.otherLayers.size(), 1u);
    const OtherLayerNode& others = *standard.otherLayers[0];
    ASSERT_EQ(others.GetLayerNum(), 2);
    EXPECT_EQ(others.FindLayerNode(L"a"), others.FindLayerNode(0));
    EXPECT_EQ(others.FindLayerNode(0)->LayerName, L"deep");  // the first in document order, however deep
    EXPECT_TRUE(others.FindLayerNode(0)->CanPlot);
    EXPECT_FALSE(others.FindLayerNode(1)->CanPlot);
    EXPECT_EQ(formatColor(others.FindLayerNode(1)->LayerColor), L"0");
    const PipeNode& pipe = *standard.groups.at(0)->FindPipeSystem(L" J ");
    EXPECT_TRUE(pipe.CanDel);
    EXPECT_FALSE(pipe.CanName);
    EXPECT_EQ(pipe.VPipeRaidus1, 0.0);  // white space is text, and no number
    EXPECT_EQ(pipe.VPipeRaidus2, 0.25);
    ASSERT_EQ(pipe.GetLayerNum(), 1);
    EXPECT_EQ(pipe.FindLayerNode(L"管线文字")->LayerName, L"dim");
    EXPECT_EQ(pipe.FindLayerNode(0)->SystemName, L" J ");
    EXPECT_EQ(standard.textStyles.at(0).Encoded, L"CHINESE_GB2312");
    EXPECT_TRUE(standard.nameRules.empty() && standard.createRules.empty() && standard.objectColors.empty());
}

// Systems and layers are parsed one by one. A document type keeps a file from that, and makes no other difference.
TEST(StandardFile, ReadsPieceByPieceWhatItReadsWhole) {
    const std::string pipe = "<Pipe><BaseInfo><PipeName>J</PipeName></BaseInfo><Layer LayerType='管线'/></Pipe>";
    const auto groups = [](const std::string& items) {
        return file("<PipeSystem><PipeGroup Name='a'>" + items + "</PipeGroup></PipeSystem>");
    };
    const std::string bodies[] = {
        groups(pipe + "text<!-- <Pipe> -->" + pipe + "<Pipe/><pipe>" + pipe + "</pipe>"),
        groups(
            "<Pipe a='>' b=\"'/>\"><BaseInfo><PipeName><![CDATA[</Pipe>]]></PipeName></BaseInfo></Pipe><?x </Pipe>?>"),
        groups("<Pipe><BaseInfo><PipeName>&lt;&#x4E00;</PipeName></BaseInfo>\r\n</Pipe >"),
        groups("<Pipe><OtherLayer><LayerGroup LayerType='inside'><Layer/></LayerGroup></OtherLayer></Pipe>"),
        file("<x><PipeSystem><PipeGroup Name='deeper'>" + pipe + "</PipeGroup></PipeSystem></x>"),
        file("<OtherLayer><PipeSystem><PipeGroup Name='in'>" + pipe + "</PipeGroup></PipeSystem></OtherLayer>"),
        file("<OtherLayer><LayerGroup LayerType='o'><Layer><LayerKey>k</LayerKey></Layer><Map><MapItem><SrcItem>a"
             "</SrcItem><DesItem>k</DesItem></MapItem></Map></LayerGroup></OtherLayer><!--<PipeSystem>-->"),
        groups("\n<Pipe><BaseInfo></Pipe></BaseInfo>"),
        groups("\n" + pipe + "\n<Pipe>&#1;</Pipe>"),
        groups("\n" + pipe + "\n<Pipe><a b='></Pipe>"),
        groups("\n" + pipe + "</PipeGroup><PipeGroup></Pipe>"),
        groups("\n" + pipe + "<Pipe") + "\n",
    };
    for (const std::string& body : bodies) {
        std::string told[2];
        for (const bool isWhole : {false, true}) {
            Standard standard;
            platform::Error error;
            const bool isRead =
                parseStandard((isWhole ? "<!DOCTYPE Morvel>" : "") + body, "test.qdsl", standard, error);
            told[isWhole] = isRead ? format(standard) : error.message;
        }
        EXPECT_EQ(told[false], told[true]) << body;
    }
}

TEST(StandardFile, RefusesWhatIsNoStandard) {
    for (const auto& [bytes, line] :
         std::vector<std::pair<std::string, std::string>>{{"", "1"},
                                                          {"plain text", "1"},
                                                          {"<Morvel>\n<PipeSystem>\n", "2"},
                                                          {"<Morvel>\n\n</Other>", "3"},
                                                          {"<Morvel/>\n<Morvel/>", "2"},
                                                          {"<Morvel>\n</Morvel>\n\nm></Morvel>", "4"},
                                                          {"\nmore<Morvel/>", "1"},
                                                          {"<!-- no root -->\n", "2"},
                                                          {"<Morvel>\n\x01</Morvel>", "2"},
                                                          {"<Morvel>\n\n&#xD800;</Morvel>", "3"},
                                                          {"<Morvel>\n&#99999999999;</Morvel>", "2"},
                                                          {"<Morvel>\n\xEF\xBF\xBE</Morvel>", "2"},
                                                          {std::string("<Morvel>\n\0</Morvel>", 19), "2"},
                                                          {"<Morvel>\n\xFF</Morvel>", "2"}}) {
        const std::string message = refusal(bytes);
        EXPECT_NE(message.find("test.qdsl: line " + line + ":"), std::string::npos) << message;
        EXPECT_EQ(message.find('\n'), std::string::npos);
    }
    EXPECT_NE(refusal("<html/>").find("html"), std::string::npos);

    const std::string shipped(builtinStandard());
    for (std::size_t length = 0; length < shipped.size() - 10; length += 9973)
        refusal(shipped.substr(0, length));
    std::string deep;
    for (int i = 0; i < 300000; ++i)
        deep += "<a>";
    EXPECT_NE(refusal(deep), "");
    for (int i = 0; i < 300000; ++i)
        deep += "</a>";
    EXPECT_TRUE(parse(file(deep)).groups.empty());
}

TEST(StandardFile, WritesTheWholeFileOrNothing) {
    const Folder folder;
    const std::wstring path = platform::innerPath(folder / "a.qdsl");
    Standard standard = parse(builtinStandard());
    standard.nameRules.push_back({L"\r\n\t", L" ", makeText(platform::fromUtf8("\xF0\xA0\x80\x80 ]]>"))});
    platform::Error error;
    standard.groups[0]->FindPipeSystem(0)->Remark = L"two\r\nlines";
    ASSERT_TRUE(writeStandard(standard, path, error)) << error.message;
    const std::string first = folder.read("a.qdsl");
    Standard back;
    ASSERT_TRUE(readStandard(path, back, error)) << error.message;
    EXPECT_TRUE(format(back) == first);
    EXPECT_EQ(back.nameRules.back().LayerType, L"\r\n\t");
    EXPECT_EQ(back.nameRules.back().LayerPrefix, L" ");
    EXPECT_EQ(back.groups[0]->FindPipeSystem(0)->Remark, L"two\r\nlines");
    ASSERT_TRUE(writeStandard(back, path, error));
    EXPECT_TRUE(folder.read("a.qdsl") == first);

    back.nameRules.back().LayerPrefix = L"\x1";
    EXPECT_FALSE(writeStandard(back, path, error));
    EXPECT_NE(error.message.find("LayerPrefix"), std::string::npos);
    EXPECT_TRUE(folder.read("a.qdsl") == first);
    EXPECT_EQ(folder.names().size(), 1u);
}

}  // namespace
