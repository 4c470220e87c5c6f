// qrsconsole: runs the commands of plug-ins on drawings, from scripts or at a prompt.
#include <exception>

#include "console/run.h"
#include "host/platform/process.h"

int main(int count, char** arguments) {
    using namespace qrs::console;
    qrs::platform::keepStandardStreams();
    qrs::platform::endWhenMappedFileIsCut(
        "qrsconsole: another program has cut short a file that was being read; nothing was written",
        static_cast<int>(ExitCode::CannotRead));
    try {
        const ParsedOptions parsed = parseOptions(qrs::platform::utf8Arguments(count, arguments));
        if (parsed.options) return static_cast<int>(run(*parsed.options));
        if (parsed.code == ExitCode::Done)
            qrs::platform::writeStandardOutput(parsed.text);
        else
            complain(parsed.text + " (--help lists the options)");
        return static_cast<int>(parsed.code);
    } catch (const std::exception& error) {
        // Memory that runs out, for example.
        complain(error.what());
        return static_cast<int>(ExitCode::CommandFailed);
    }
}
