// qrsconsole: runs the commands of plug-ins on drawings, from scripts or at a prompt.
#include <exception>
#include <string>
#include <vector>

#include "console/run.h"
#include "host/platform/error.h"
#include "host/platform/language.h"
#include "host/platform/process.h"

int main(int count, char** arguments) {
    using namespace qrs::console;
    qrs::platform::keepStandardStreams();
    try {
        const std::vector<std::string> given = qrs::platform::utf8Arguments(count, arguments);
        chooseLanguage(given);
        qrs::platform::endWhenMappedFileIsCut(
            "qrsconsole: " + qrs::platform::translated(
                                 "another program has cut short a file that was being read; nothing was written"),
            static_cast<int>(ExitCode::CannotRead));
        qrs::platform::endWhenMemoryRunsOut(
            "qrsconsole: " + qrs::platform::translated("memory has run out; nothing more was written"),
            static_cast<int>(ExitCode::CommandFailed));
        const ParsedOptions parsed = parseOptions(given);
        if (parsed.options) return static_cast<int>(run(*parsed.options));
        if (parsed.code == ExitCode::Done) {
            if (qrs::platform::writeStandardOutput(parsed.text)) return 0;
            complain(qrs::platform::translated("standard output cannot be written"));
            return static_cast<int>(ExitCode::CannotWrite);
        }
        complain(qrs::platform::translated("%1 (--help lists the options)", parsed.text));
        return static_cast<int>(parsed.code);
    } catch (const std::exception& error) {
        complain(qrs::platform::reasonOf(error));
        return static_cast<int>(ExitCode::CommandFailed);
    }
}
