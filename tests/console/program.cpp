// Runs the console program.
#include "program.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace fs = std::filesystem;

namespace {

std::string quoted(const std::string& argument) {
    std::string text = "'";
    for (const char c : argument)
        text += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return text + "'";
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        line.erase(0, line.find_first_not_of(' '));
        line.erase(line.find_last_not_of(" \r") + 1);
        lines.push_back(line);
    }
    return lines;
}

}  // namespace

std::vector<std::string> changedLines(const std::string& before, const std::string& after) {
    const std::vector<std::string> old = linesOf(before), now = linesOf(after);
    EXPECT_EQ(old.size(), now.size());
    std::vector<std::string> changes;
    for (std::size_t i = 0; i < old.size() && i < now.size(); ++i)
        if (old[i] != now[i]) changes.push_back(old[i] + " > " + now[i]);
    return changes;
}

fs::path Workplace::example(const std::string& name) const {
    fs::copy_file(fs::path(QRS_SOURCE_DIR) / "examples" / name, path(name));
    return path(name);
}

Outcome Workplace::run(const std::vector<std::string>& arguments, const std::string& input,
                       const std::vector<std::string>& environment) const {
    write("stdin.tmp", input);
    std::string command =
        "cd " + quoted(folder_.path().string()) + " && XDG_CONFIG_HOME=" + quoted(folder_.path().string());
    for (const std::string& variable : environment)
        command += " " + variable.substr(0, variable.find('=') + 1) + quoted(variable.substr(variable.find('=') + 1));
    command += " " + quoted(QRS_CONSOLE);
    for (const std::string& argument : arguments)
        command += " " + quoted(argument);
    command += " <stdin.tmp >stdout.tmp 2>stderr.tmp";
    const int status = std::system(command.c_str());
    Outcome outcome;
    // The shell gives the program's own code in the second byte.
    outcome.code = (status & 0xFF) == 0 ? (status >> 8) & 0xFF : -1;
    outcome.out = read("stdout.tmp");
    outcome.error = read("stderr.tmp");
    return outcome;
}
