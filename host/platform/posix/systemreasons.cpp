// Why the system refuses: its own words, and in Chinese those it refuses with most, since its own are there only where
// a translation of it is installed.
#include <system_error>

#include "host/platform/inside/fileerror.h"
#include "host/platform/language.h"

namespace qrs::platform {

namespace {

struct Reason {
    std::errc code;
    const char* chinese;
};
constexpr Reason kReasons[] = {
    {std::errc::argument_list_too_long, "参数太长"},
    {std::errc::cross_device_link, "不在同一个文件系统上"},
    {std::errc::device_or_resource_busy, "设备或资源正在使用"},
    {std::errc::directory_not_empty, "文件夹不是空的"},
    {std::errc::executable_format_error, "不是可以运行的程序"},
    {std::errc::file_exists, "文件已经存在"},
    {std::errc::file_too_large, "文件太大"},
    {std::errc::filename_too_long, "文件名太长"},
    {std::errc::interrupted, "操作被打断"},
    {std::errc::invalid_argument, "参数无效"},
    {std::errc::io_error, "输入或输出出错"},
    {std::errc::is_a_directory, "是文件夹"},
    {std::errc::no_lock_available, "不能加锁"},
    {std::errc::no_space_on_device, "磁盘已满"},
    {std::errc::no_such_device, "没有这个设备"},
    {std::errc::no_such_device_or_address, "没有这个设备或地址"},
    {std::errc::no_such_file_or_directory, "没有这个文件或文件夹"},
    {std::errc::not_a_directory, "不是文件夹"},
    {std::errc::not_enough_memory, "内存不足"},
    {std::errc::operation_not_permitted, "不允许这样做"},
    {std::errc::permission_denied, "权限不足"},
    {std::errc::read_only_file_system, "文件系统是只读的"},
    {std::errc::resource_unavailable_try_again, "资源暂时不可用"},
    {std::errc::too_many_files_open, "打开的文件太多"},
    {std::errc::too_many_symbolic_link_levels, "符号链接的层数太多"},
};

}  // namespace

std::string textOf(const std::error_code& reason) {
    if (language() == Language::Chinese)
        for (const Reason& row : kReasons)
            if (reason == row.code) return row.chinese;
    return reason.message();
}

}  // namespace qrs::platform
