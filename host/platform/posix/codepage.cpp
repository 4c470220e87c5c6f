// Code pages through iconv of the C library.
#include <iconv.h>

#include <string>

#include "host/platform/inside/codepagetable.h"

namespace qrs::platform {

namespace {

// Names that are not just the number after "CP".
struct CodePageName {
    unsigned codePage;
    const char* name;
};

constexpr CodePageName kNames[] = {
    {936, "GBK"},           {10000, "MACINTOSH"},  {20127, "ASCII"},      {20866, "KOI8-R"},     {21866, "KOI8-U"},
    {28591, "ISO-8859-1"},  {28592, "ISO-8859-2"}, {28593, "ISO-8859-3"}, {28594, "ISO-8859-4"}, {28595, "ISO-8859-5"},
    {28596, "ISO-8859-6"},  {28597, "ISO-8859-7"}, {28598, "ISO-8859-8"}, {28599, "ISO-8859-9"}, {28603, "ISO-8859-13"},
    {28605, "ISO-8859-15"}, {kGb18030, "GB18030"},
};

std::string nameOf(unsigned codePage) {
    for (const CodePageName& row : kNames) {
        if (row.codePage == codePage) return row.name;
    }
    return "CP" + std::to_string(codePage);
}

class Converter {
  public:
    Converter(const char* to, const char* from) : handle_(iconv_open(to, from)) {}
    ~Converter() {
        if (isOpen()) iconv_close(handle_);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    bool isOpen() const { return handle_ != reinterpret_cast<iconv_t>(-1); }

    // Bytes written for the whole input, from a fresh state to a finished one; 0 when it has no counterpart.
    std::size_t convert(const void* in, std::size_t inSize, void* out, std::size_t outSize) {
        char* from = const_cast<char*>(static_cast<const char*>(in));
        char* to = static_cast<char*>(out);
        std::size_t left = outSize;
        iconv(handle_, nullptr, nullptr, nullptr, nullptr);
        if (iconv(handle_, &from, &inSize, &to, &left) != 0 || inSize != 0) return 0;
        // Some pages hold a letter back in case a mark follows that joins it.
        if (iconv(handle_, nullptr, nullptr, &to, &left) != 0) return 0;
        return outSize - left;
    }

  private:
    iconv_t handle_;
};

class IconvCodePage : public SystemCodePage {
  public:
    explicit IconvCodePage(const std::string& name)
        : decoder_("WCHAR_T", name.c_str()), encoder_(name.c_str(), "WCHAR_T") {}

    bool isOpen() const { return decoder_.isOpen() && encoder_.isOpen(); }

    std::optional<char32_t> decode(std::string_view character) override {
        wchar_t out[4];
        if (decoder_.convert(character.data(), character.size(), out, sizeof out) != sizeof out[0]) return std::nullopt;
        return static_cast<char32_t>(out[0]);
    }

    std::uint16_t encode(char32_t codePoint) override {
        const auto unit = static_cast<wchar_t>(codePoint);
        unsigned char out[8];
        const std::size_t count = encoder_.convert(&unit, sizeof unit, out, sizeof out);
        if (count == 1) return out[0];
        return count == 2 ? static_cast<std::uint16_t>(out[0] << 8 | out[1]) : std::uint16_t{0};
    }

  private:
    Converter decoder_;
    Converter encoder_;
};

}  // namespace

std::optional<unsigned> systemAnsiCodePage() {
    return std::nullopt;
}

std::unique_ptr<SystemCodePage> SystemCodePage::open(unsigned codePage) {
    auto page = std::make_unique<IconvCodePage>(nameOf(codePage));
    if (!page->isOpen()) return nullptr;
    return page;
}

}  // namespace qrs::platform
