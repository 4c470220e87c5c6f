// This room's texts in Chinese.
#include "host/platform/language.h"

namespace qrs::platform {

namespace {

constexpr Translation kRows[] = {
    // the command line
    {"Command: ", "命令："},
    {"*Cancel*\n", "*取消*\n"},
    {"Unknown command \"%1\".", "未知命令“%1”。"},
    {" Did you mean %1?", "是不是 %1？"},
    {" or ", " 或 "},
    {"An expression is no command: it answers a prompt for objects.", "表达式不是命令，只能用来回答选择对象的提示。"},
    {"\n** Transparent commands may not be nested **\n", "\n** 透明命令不能嵌套 **\n"},
    {"\n** That command may not be invoked transparently **\n", "\n** 该命令不能透明使用 **\n"},
    {"\nResuming %1 command.\n", "\n继续执行命令 %1。\n"},
    {"%1: not answered: %2", "%1：没有回答：%2"},
    {"%1: cancelled: %2", "%1：已取消：%2"},
    {"%1 needs an open drawing.", "%1 需要打开的图形。"},
    {"\n** Command not allowed in Model Tab **\n", "\n** 该命令不能在模型布局中使用 **\n"},
    {"\n** Command only allowed in Model Tab **\n", "\n** 该命令只能在模型布局中使用 **\n"},
    {"A reactor", "某个反应器"},
    {"an unknown exception", "未知异常"},
    {"%1 was cut short by another program while it was read; what the command did is not to be trusted",
     "%1 在读取时被别的程序截短，命令的结果不可信"},
    {"%1 failed: %2", "%1 失败：%2"},
    // numbers, points, keywords
    {"Value must be positive and nonzero.", "数值必须大于零。"},
    {"Value must be nonzero.", "数值不能为零。"},
    {"Value must be positive.", "数值不能为负。"},
    {"Requires numeric value or option keyword.", "需要数值或选项关键字。"},
    {"Requires numeric value.", "需要数值。"},
    {"Requires an integer value or option keyword.", "需要整数或选项关键字。"},
    {"Requires an integer value.", "需要整数。"},
    {"Requires an integer between -32768 and 32767.", "需要 -32768 到 32767 之间的整数。"},
    {"Requires numeric distance, two points, or option keyword.", "需要距离数值、两点或选项关键字。"},
    {"Requires numeric distance or two points.", "需要距离数值或两点。"},
    {"Point or option keyword required.", "需要点或选项关键字。"},
    {"Invalid point.", "点无效。"},
    {"Invalid option keyword.", "选项关键字无效。"},
    {"\nSpecify second point: ", "\n指定第二点："},
    // selections
    {"\nSelect objects: ", "\n选择对象："},
    {"\nRemove objects: ", "\n删除对象："},
    {"\nSelect object: ", "\n选择一个对象："},
    {"\nPoint or option keyword required.\n", "\n需要点或选项关键字。\n"},
    {"\nInvalid point.\n", "\n点无效。\n"},
    {"\nSpecify first corner: ", "\n指定第一个角点："},
    {"\nSpecify opposite corner: ", "\n指定对角点："},
    {"\nSpecify first fence point: ", "\n指定栏选的第一点："},
    {"\nSpecify next fence point or [Undo]: ", "\n指定栏选的下一点或 [Undo]："},
    {"\nFirst polygon point: ", "\n指定多边形的第一点："},
    {"\nSpecify endpoint of line or [Undo]: ", "\n指定边的端点或 [Undo]："},
    {"\n*Invalid selection*\nExpects a point or "
     "Window/Last/Crossing/BOX/ALL/Fence/WPolygon/CPolygon/Add/Remove/Multiple/Previous/Undo/AUto/SIngle or an "
     "expression: (ssget \"X\" '((8 . \"PIPE*\")))\n",
     "\n*选择无效*\n应为点，或 "
     "Window/Last/Crossing/BOX/ALL/Fence/WPolygon/CPolygon/Add/Remove/Multiple/Previous/Undo/AUto/"
     "SIngle，或表达式：(ssget \"X\" '((8 . \"PIPE*\")))\n"},
    {"*Invalid selection*\nExpects a point or Last or an expression: (ssname (ssget ...) 0)",
     "*选择无效*\n应为点、Last 或表达式：(ssname (ssget ...) 0)"},
    {"*Invalid selection*\nExpects a point: what a reference shows cannot be named",
     "*选择无效*\n应为点：参照所显示的图元不能用名称指定"},
    {"\nNothing is found: %1\n", "\n没有找到图元：%1\n"},
    {"*Invalid selection*\n%1 entities are named, one is wanted: (ssname (ssget ...) 0)",
     "*选择无效*\n指定了 %1 个图元，只要一个：(ssname (ssget ...) 0)"},
    {"\nInvalid window specification.\n", "\n窗口无效。\n"},
    {"\nNo previous selection set.\n", "\n没有上一个选择集。\n"},
    {"\nNothing to undo.\n", "\n没有可以放弃的操作。\n"},
    {"\n1 was not in current space.\n", "\n1 个不在当前空间中。\n"},
    {"\n%1 were not in current space.\n", "\n%1 个不在当前空间中。\n"},
    {"\n%1 found", "\n找到 %1 个"},
    {" (%1 duplicate)", "（重复 %1 个）"},
    {", 1 was filtered out", "，滤除 1 个"},
    {", %1 were filtered out", "，滤除 %1 个"},
    {", %1 removed", "，删除 %1 个"},
    {", %1 total", "，总计 %1 个"},
    {"nothing is met: %1", "没有碰到图元：%1"},
    {"\nExternal reference \"%1\" cannot be read.\n", "\n外部参照“%1”不能读取。\n"},
    // expressions
    {"*Invalid expression*: %1\nExpects %2", "*表达式无效*：%1\n应为 %2"},
    {"something stands after its end", "结尾之后还有内容"},
    {"too many parentheses", "括号太多"},
    {"something is missing", "缺少内容"},
    {"a closing parenthesis is missing", "缺少右括号"},
    {"a point stands where none belongs", "点号的位置不对"},
    {"a point has one value before it and one after it", "点号前后应各有一个值"},
    {"a closing quote is missing", "缺少右引号"},
    {"%1 is no condition", "%1 不是条件"},
    {"ssget has no mode %1 here", "ssget 在这里没有方式 %1"},
    {"too many groups stand in each other", "条件组嵌套太深"},
    {"%1 closes too many conditions or too few", "%1 结束的组中条件太多或太少"},
    {"the operator %1 does not belong there", "运算符 %1 的位置不对"},
    {"%1 is missing", "缺少 %1"},
    {"there is no condition for group %1", "组码 %1 不能作条件"},
    {"the operator %1 is not for group %2", "运算符 %1 不能用于组码 %2"},
    {"ssname takes a selection", "ssname 需要一个选择集"},
    {"ssname counts from 0", "ssname 从 0 数起"},
    {"%1 names nothing", "%1 没有指定任何图元"},
    {"%1 is used in another way", "%1 的用法不对"},
    {"there is no %1", "没有 %1"},
    {"everything", "全部"},
    {"what is not frozen", "未冻结的"},
    {"the previous selection", "上一个选择集"},
    {"what SELECT or a program left", "SELECT 或程序留下的"},
    {"the newest that is not frozen", "未冻结的最后一个"},
    {"(8 . \"PIPE*\"), with the group codes %1; (-3 (\"APPLICATION\")); groups from (-4 . \"<OR\") to (-4 . \"OR>\"), "
     "AND, XOR, NOT; before a number (-4 . \">=\"), one of %2",
     "(8 . \"PIPE*\")，组码可为 %1；(-3 (\"APPLICATION\"))；成组时从 (-4 . \"<OR\") 到 (-4 . \"OR>\")，也可用 "
     "AND、XOR、NOT；数字之前可用 (-4 . \">=\")，运算符为 %2 之一"},
    // colours
    {"Select Color", "选择颜色"},
    {"OK", "确定"},
    {"Cancel", "取消"},
    {"Color:", "颜色："},
    {"ByLayer is %1", "随层为 %1"},
    {"A color is a number from 1 to 255, red,green,blue or one of the names listed.",
     "颜色应为 1 到 255 的数字、“红,绿,蓝”三个数值，或列出的名称之一。"},
    {"A color is a number from 1 to 255 or one of the names listed.", "颜色应为 1 到 255 的数字，或列出的名称之一。"},
    // drawings and plug-ins
    {"The drawing cannot be closed while a command works on it.", "命令正在处理图形，不能关闭。"},
    {"No drawing is open.", "没有打开的图形。"},
    {"a plug-in of that name is loaded already", "同名的插件已经加载"},
    {"not a plug-in, it has no %1", "不是插件：没有 %1"},
    {"the plug-in refused to start", "插件拒绝启动"},
    {"no such plug-in is loaded", "没有加载这个插件"},
    {"the plug-in is locked", "插件已锁定"},
    {"the plug-in is at work", "插件正在运行"},
    {"the plug-in left %1 commands, reactors or filters behind; they were removed",
     "插件留下 %1 个命令、反应器或过滤器，已删除"},
};

const Translations kTexts(kRows);

}  // namespace

}  // namespace qrs::platform
