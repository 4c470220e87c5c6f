// What this room tells of files, in Chinese. What commands say is stated in Chinese alone.
#include "host/platform/language.h"

namespace qrs::platform {

namespace {

constexpr Translation kRows[] = {
    {"\nThe standard file was not loaded: %1. %2\n", "\n管线系统标准文件没有载入：%1。%2\n"},
    {"The table %1 is damaged, or cannot be read.", "表 %1 已损坏，或不能读取。"},
    {"The default standard serves this time.", "本次改用默认标准。"},
    {"There is no pipe-system standard now.", "现在没有管线系统标准。"},
    {"The one that is loaded serves on.", "仍使用已载入的标准。"},
    {"\nThe choice of the standard cannot be saved: %1\n", "\n不能保存当前管线系统标准的设置：%1\n"},
    {"\nOld layer definitions %1: cannot read line %2, %3 left out.\n",
     "\n旧图层定义 %1：第 %2 行无法识别，共跳过 %3 行。\n"},
    {"%1, %2", "%1、%2"},
    {", ...", "……"},
    {"The standard cannot be saved: %1", "不能保存管线系统标准：%1"},
    {"\nOld layer definitions were not read: %1\n", "\n旧图层定义没有读取：%1\n"},
    {"%1: line %2: %3", "%1：第 %2 行：%3"},
    {"not well-formed XML (%1)", "不是完好的 XML（%1）"},
    {"text outside of the root element", "根元素之外有文字"},
    {"a second root element", "第二个根元素"},
    {"no root element", "没有根元素"},
    {"out of memory", "内存不足"},
    {"no tag after <", "< 之后不是标记"},
    {"a faulty declaration or instruction", "声明或指令有错"},
    {"a faulty comment", "注释有错"},
    {"a faulty CDATA section", "CDATA 段有错"},
    {"a faulty document type", "文档类型有错"},
    {"faulty text", "文字有错"},
    {"a faulty start tag", "开始标记有错"},
    {"a faulty attribute", "属性有错"},
    {"a faulty end tag", "结束标记有错"},
    {"an end tag of another element", "结束标记与开始标记不符"},
    {"holds a character that XML does not allow", "含有 XML 不允许的字符"},
    {"%1: the file is too large for the memory", "%1：文件太大，内存不足"},
    {"no valid text in %1", "不是有效的 %1 文本"},
    {"unknown encoding %1", "不能识别的编码 %1"},
    {"%1: not a file of a standard (its root element is \"%2\")", "%1：不是管线系统标准文件（根元素是“%2”）"},
    {"the text of element %1 holds a character that XML cannot store", "元素 %1 的文字含有 XML 不能保存的字符"},
    {"\nThe module qrs_pipeSystem has not been started: there is no standard to ask. Load it first.\n",
     "\n管线系统模块 qrs_pipeSystem 没有启动，没有管线系统标准可以查询。请先加载它。\n"},
    {"\nThe linetype \"%1\" is damaged in linetype.dbf and cannot be loaded!",
     "\nlinetype.dbf文件中线型\"%1\"的数据有错误，不能加载！"},
};

const Translations kTexts(kRows);

}  // namespace

}  // namespace qrs::platform
