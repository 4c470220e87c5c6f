// A converter between DXF drawings and what these tests have for DWG: a version, and then the text of a DXF drawing.
//   test_converter IN OUT dwg|dxf [FAULT]     the form of IN; with FAULT it goes wrong, at once or after converting
//   back
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <thread>

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kMarkLength = 7;  // "AC1032" and a zero

void write(const fs::path& file, const std::string& bytes) {
    std::ofstream(file, std::ios::binary) << bytes;
}

[[noreturn]] void end(const char* lastWords, int code) {
    std::cerr << lastWords << std::endl;
    std::exit(code);
}

void goWrongAtOnce(const std::string& fault, const fs::path& in, const fs::path& out) {
    if (fault == "refuse") end("not today", 3);
    if (fault == "nothing") end("done", 0);
    if (fault == "hang") std::this_thread::sleep_for(std::chrono::seconds(30));
    if (fault == "nonsense") {
        fs::remove(in);
        write(out, "x\n");
        std::exit(0);
    }
}

void goWrongAtLast(const std::string& fault, const fs::path& in, const fs::path& out) {
    if (fault == "unlicensed") end("no license", 1);
    if (fault == "older") write(out, std::string("AC1015\0", kMarkLength));
    if (fault == "vanish") {
        fs::remove(in);
        fs::remove(out);
    }
}

}  // namespace

int main(int count, char** arguments) {
    if (count < 4) return 2;
    const fs::path in = arguments[1], out = arguments[2];
    const std::string fault = count > 4 ? arguments[4] : "";
    goWrongAtOnce(fault, in, out);
    std::ifstream stream(in, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    stream.close();
    if (arguments[3] == std::string("dwg")) {
        write(out, bytes.substr(kMarkLength));
        return 0;
    }
    write(out, std::string("AC1032\0", kMarkLength) + bytes);
    goWrongAtLast(fault, in, out);
    return 0;
}
