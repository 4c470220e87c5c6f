// Runs the console program as its users do: as a child process, with files in a folder of the test's own.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "../folder.h"

struct Outcome {
    int code = -1;
    std::string out;
    std::string error;
};

// A folder that disappears with the object.
class Workplace {
  public:
    std::filesystem::path path(const std::string& name) const { return folder_ / name; }
    std::filesystem::path write(const std::string& name, const std::string& content) const {
        return folder_.write(name, content);
    }
    // A copy of examples/<name>.
    std::filesystem::path example(const std::string& name) const;
    std::string read(const std::string& name) const { return folder_.read(name); }
    bool has(const std::string& name) const { return std::filesystem::exists(path(name)); }

    // Runs it in the folder, with settings of its own; input is what it finds on standard input, environment are
    // "NAME=value" texts.
    Outcome run(const std::vector<std::string>& arguments, const std::string& input = {},
                const std::vector<std::string>& environment = {}) const;

    // From now on each run has so much: of the processor, and of memory where no sanitizer takes some for itself.
    // Beyond it is ended. POSIX alone.
    void limit(int seconds, [[maybe_unused]] int megabytes) {
        limits_ = "ulimit -t " + std::to_string(seconds);
#if !defined(QRS_SANITIZE)
        limits_ += " && ulimit -v " + std::to_string(megabytes * 1024);
#endif
    }

  private:
    Folder folder_;
    std::string limits_ = ":";
};

// The lines that differ between two texts of equally many lines: "old > new", without blanks around.
std::vector<std::string> changedLines(const std::string& before, const std::string& after);
