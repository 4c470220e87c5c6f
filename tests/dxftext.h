// Drawings from short texts.
#pragma once

#include <sstream>
#include <string>

// Two lines a tag from "code=value" words separated by ';'.
inline std::string dxfText(const std::string& tags) {
    std::string text;
    std::istringstream words(tags);
    for (std::string tag; std::getline(words, tag, ';');) {
        const std::size_t equals = tag.find('=');
        text += std::string(equals < 3 ? 3 - equals : 0, ' ') + tag.substr(0, equals) + "\n" + tag.substr(equals + 1) +
                "\n";
    }
    return text;
}
