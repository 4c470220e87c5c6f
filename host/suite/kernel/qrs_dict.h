// Stand-in for the kernel library's dictionary file: sections of keys and values, as setting.ini has them.
//
//     TWDict settings;
//     std::wstring reason;
//     if (!settings.ReadFile(path, reason)) return tell(reason);  // a missing file reads as empty
//     TWDict* section = settings.FindOrAddDict(L"设备设置");
//     section->SetValue(L"喷头半径", 1.5);
//     if (!settings.WriteFile(path, reason)) return tell(reason);
//
//     ; a comment
//     [设备设置]
//     喷头半径=1.5
//
// A file that is read and written again keeps everything that was not set as it is: other sections and keys, comments,
// order, blanks, line ends and encoding (UTF-8 with and without mark, UTF-16 with mark, or else the ANSI code page; a
// file in the ANSI code page becomes UTF-8 with a mark when what is set needs other characters). New keys stand after
// the last one of their section, new sections at the end. A new file is UTF-8 with a mark and CRLF. Sections and keys
// match without regard to case and to blanks around them; of several of one name the first counts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "host/platform/port.h"

// A dictionary: the whole file, or one of its sections. Keys before the first section are the whole file's own.
class QRS_HOST_PORT TWDict {
  public:
    TWDict();
    ~TWDict();
    TWDict(const TWDict&) = delete;
    TWDict& operator=(const TWDict&) = delete;

    // Replaces everything by the content of a file (path in the inner form); a missing one is empty. False, with the
    // reason (one line) and everything as it was, when it cannot be read or is no text.
    bool ReadFile(const std::wstring& path, std::wstring& reason);

    // Writes the file whole or not at all. False, with the reason (one line), when it cannot be written. A link of that
    // name is followed, or gives way to the file.
    bool WriteFile(const std::wstring& path, std::wstring& reason, bool followLink = true) const;

    // The section of that name, made when it is missing; it lives until the next ReadFile. Null for a section itself
    // and for a name that is empty, holds a line break or ']', or begins or ends with a blank.
    TWDict* FindOrAddDict(const std::wstring& name);
    // Null when there is none.
    const TWDict* FindDict(const std::wstring& name) const;

    // The value of a key, replaced where it stands or added. Real numbers always show a point. False, nothing changed,
    // for a key that is empty, holds a line break or '=', begins with '[' or ';' or begins or ends with a blank, for a
    // text that holds a line break and for a number that is not finite. A text that begins or ends with a blank or a
    // quote is written in quotes.
    bool SetValue(const std::wstring& key, const std::wstring& text);
    bool SetValue(const std::wstring& key, std::int32_t number);
    bool SetValue(const std::wstring& key, double number);

    // False, value untouched, when the key is missing or its text is no such number. Blanks around a text do not count,
    // nor does one pair of quotes around it.
    bool GetValue(const std::wstring& key, std::wstring& text) const;
    bool GetValue(const std::wstring& key, std::int32_t& number) const;
    bool GetValue(const std::wstring& key, double& number) const;

  private:
    struct State;  // of the whole file
    explicit TWDict(State& file, std::size_t section);
    std::optional<std::size_t> FindLine(const std::wstring& key) const;

    std::unique_ptr<State> own_;  // null in a section
    State* file_;
    std::size_t section_ = 0;  // of the file's text
};
