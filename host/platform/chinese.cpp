// This room's texts in Chinese.
#include "host/platform/language.h"

namespace qrs::platform {

namespace {

constexpr Translation kRows[] = {
    {"memory has run out", "内存不足"},
    // files
    {"is no ordinary file", "不是普通文件"},
    {"is a folder", "是文件夹"},
    {"is no folder", "不是文件夹"},
    {"is read-only", "是只读文件"},
    {"is larger than %1 MB", "大于 %1 MB"},
    {"is larger than %1 bytes", "大于 %1 字节"},
    {"cannot be read", "不能读取"},
    {"is the file to be copied itself", "就是要复制的那个文件"},
    {"was changed by another program after it was opened; not saved", "打开以后被别的程序改动过，没有保存"},
    {"was cut short by another program while it was read; not saved", "读取时被别的程序截短，没有保存"},
    {"; %1 did not get its name back: %2", "；%1 没有恢复原来的文件名：%2"},
    {"no file was begun", "还没有开始写文件"},
    {"error %1 of the system", "系统错误 %1"},
    // texts
    {"UTF-16 text with half a character at its end", "UTF-16 文字的末尾只有半个字符"},
    {"no text: there is a character 0 in it", "不是文字：其中有字符 0"},
    {"text neither in UTF-8 nor in code page %1", "文字既不是 UTF-8，也不是代码页 %1"},
    // settings
    {"a key is empty or holds what is no text", "键是空的，或者含有不是文字的内容"},
    {"is not UTF-8", "不是 UTF-8"},
    {"holds a control character", "含有控制字符"},
    {"a section without its closing bracket", "节的名称后面缺少右方括号"},
    {"neither a section nor a value nor a comment", "既不是节，也不是值，也不是注释"},
    {"a value before the first section", "第一节之前就有值"},
    {"an unknown escape in the name", "名称中有不认识的转义"},
    {"an unknown escape in the text", "文字中有不认识的转义"},
    {"a value without its type", "值没有类型"},
    {"no whole number of 32 bits", "不是 32 位整数"},
    {"no number", "不是数字"},
    // other programs and libraries
    {"did not end within %1 seconds", "%1 秒之内没有结束"},
    {"was ended by signal %1", "被信号 %1 终止"},
    {"ended with exit code %1", "以退出码 %1 结束"},
    {"the file is cut off", "文件不完整"},
    {"its entry refused to start", "它的入口拒绝启动"},
    {"cannot be loaded", "不能加载"},
    // dialogs as text
    {"Value [?/OK/Cancel] <OK>: ", "值 [?/确定/取消] <确定>："},
    {"Number, name or name=value [?/OK/Cancel] <OK>: ", "编号、名称或 名称=值 [?/确定/取消] <确定>："},
    {"\"%1\" is the name of more than one; give the number.", "叫“%1”的不止一个，请给出编号。"},
    {"A number or a name is missing.", "缺少编号或名称。"},
    {"There is no \"%1\".", "没有“%1”。"},
    {"Nothing matches \"%1\".", "没有与“%1”相符的项。"},
    {"There is nothing to change.", "没有可以更改的项。"},
    {"Numbers go from 1 to %1.", "编号从 1 到 %1。"},
    {"\"%1\" cannot be changed now.", "“%1”现在不能更改。"},
    {"\"%1\" is neither 1 nor 0.", "“%1”既不是 1，也不是 0。"},
    {"\"%1\" is none of the choices.", "“%1”不在可选的项之中。"},
    {"\"%1\" is none of the buttons.\n", "“%1”不是这里的按钮。\n"},
    {"There is no folder \"%1\".\n", "没有文件夹“%1”。\n"},
};

const Translations kTexts(kRows);

}  // namespace

}  // namespace qrs::platform
