// The program's arguments, environment and standard streams.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/platform/port.h"

namespace qrs::platform {

// The arguments of main in UTF-8, the program's name first. On POSIX the bytes are given as they came.
QRS_HOST_PORT std::vector<std::string> utf8Arguments(int count, char** arguments);

// Gives the program an empty standard input, and outputs that cannot be written, where it was started without: to be
// called before the first file is opened, which would otherwise stand in for them.
QRS_HOST_PORT void keepStandardStreams();

// From now on the signals that ask a program to end (on POSIX SIGTERM, SIGHUP and, when withInterrupt, SIGINT; on
// Windows Ctrl-C, Ctrl-Break and the closing of the window) first remove the temporary files AtomicFile has in
// progress; then the program ends as it would have without. To be called before other threads are started.
QRS_HOST_PORT void removeTemporariesWhenEnded(bool withInterrupt);

// True when descriptor 0, 1 or 2 is a terminal.
QRS_HOST_PORT bool isTerminal(int descriptor);

// The next byte of standard input, unbuffered; nothing at its end, or when none comes within the time (negative: as
// long as it takes).
QRS_HOST_PORT std::optional<char> readInputByte(int milliseconds);

// What a person at a terminal did instead of, or by, typing a line.
enum class Typed {
    Line,
    Cancelled,  // ^C, here or since the last line; only where removeTemporariesWhenEnded leaves ^C to the program
    Leaving,    // the key that ends input, where a terminal has one and can go on after it (on Windows ^Z)
    End,        // nothing more will come
};

// The next line of standard input, without its line end. Bytes are UTF-8 or else text of the ANSI code page; what is
// typed at a Windows console needs no code page.
QRS_HOST_PORT Typed readTypedLine(std::wstring& line);

// A variable of the environment; nothing when it is not set.
QRS_HOST_PORT std::optional<std::wstring> environment(const char* name);

// Writes all of the bytes, at once and unbuffered. False when they cannot be written, as on a full disk. A pipe whose
// reader has gone, having seen enough, is no failure: the bytes are dropped.
QRS_HOST_PORT bool writeStandardOutput(std::string_view bytes);
QRS_HOST_PORT bool writeStandardError(std::string_view bytes);
// True once the reader of standard output was found gone.
QRS_HOST_PORT bool isOutputDropped();

// From now on, when bytes of a mapped file are gone because another program has cut the file short, zeros are read (see
// lostfile.h). Where that cannot be done: prints the line to standard error, removes the temporary files AtomicFile has
// in progress, and ends the process with the exit code. Does nothing on Windows, where files are not mapped.
QRS_HOST_PORT void endWhenMappedFileIsCut(std::string line, int exitCode);

// From now on, when memory has run out in a place that no exception may leave: prints the line to standard error,
// removes the temporary files AtomicFile has in progress, and ends the process with the exit code.
QRS_HOST_PORT void endWhenMemoryRunsOut(std::string line, int exitCode);

}  // namespace qrs::platform
