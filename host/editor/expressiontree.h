// The parts of an expression in parentheses, as it was typed.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qrs::host::ed {

struct Expression {
    enum class Kind { Symbol, Text, Number, List };

    Kind kind = Kind::List;
    std::wstring source;    // as it was typed
    std::wstring text;      // of a Text, without its quotes
    double number = 0.0;    // of a Number
    bool isWhole = false;   // a Number without fraction
    bool isQuoted = false;  // ' stands before it
    bool isPair = false;    // a List of two with a point between them: (8 . "A")
    std::vector<Expression> items;
};

// Reads a text that is one expression. Nothing, with the fault, for other texts.
std::optional<Expression> readExpression(std::wstring_view text, std::wstring& fault);

}  // namespace qrs::host::ed
