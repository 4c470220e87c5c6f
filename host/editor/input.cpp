// Where the answers of the command line come from.
#include "host/editor/input.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace qrs::host::ed {

namespace {

constexpr wchar_t kEscape = L'\x1b';

constexpr const wchar_t* kBlanks = L" \t";

bool isBlank(wchar_t c) {
    return c == L' ' || c == L'\t';
}

std::wstring withoutBlanksAtEnd(std::wstring line) {
    line.erase(line.find_last_not_of(kBlanks) + 1);  // npos + 1 is 0
    return line;
}

// Tells where an expression in parentheses ends that a text begins with: blanks, line ends, quoted texts and comments
// (from ";" to the line's end) belong to it.
class Parentheses {
  public:
    void take(std::wstring_view text) {
        for (const wchar_t c : text)
            take(c);
    }
    void take(wchar_t c) {
        const wchar_t previous = std::exchange(previous_, isQuoted_ && previous_ == L'\\' ? L'\0' : c);
        if (isComment_) {
            isComment_ = c != L'\n';
        } else if (isQuoted_) {
            isQuoted_ = c != L'"' || previous == L'\\';
        } else if (c == L'(' && (depth_ > 0 || isFirst_)) {
            ++depth_;
        } else if (depth_ > 0) {
            if (c == L')') --depth_;
            isQuoted_ = c == L'"';
            isComment_ = c == L';';
        }
        isFirst_ = false;
    }
    bool isOpen() const { return depth_ > 0; }

  private:
    int depth_ = 0;
    bool isFirst_ = true;
    bool isQuoted_ = false;
    bool isComment_ = false;
    wchar_t previous_ = L'\0';
};

// The length of the word a text begins with. An expression in parentheses is one word.
std::size_t wordLength(std::wstring_view text) {
    Parentheses parentheses;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (isBlank(text[i]) && !parentheses.isOpen()) return i;
        parentheses.take(text[i]);
    }
    return text.size();
}

// A word that began with an open parenthesis goes on over blanks and lines.
bool isOpenExpression(const std::wstring& word) {
    if (word.empty() || word.front() != L'(') return false;
    Parentheses parentheses;
    parentheses.take(word);
    return parentheses.isOpen();
}

// Line ends of every kind become "\n", and the way menus write Esc becomes the character.
std::wstring asTyped(std::wstring_view text) {
    std::wstring typed;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const wchar_t following = i + 1 < text.size() ? text[i + 1] : L'\0';
        if (text[i] == L'\r') {
            if (following != L'\n') typed += L'\n';
        } else if (text[i] == L'^' && (following == L'C' || following == L'c')) {
            typed += kEscape;
            ++i;
        } else {
            typed += text[i];
        }
    }
    return typed;
}

// True for a line that cancels; what stands on it besides is left of it.
bool takeCancel(std::wstring& line) {
    const std::size_t length = line.size();
    if (line == L"^C" || line == L"^c") line.clear();
    line.erase(std::remove(line.begin(), line.end(), kEscape), line.end());
    return line.size() < length;
}

}  // namespace

Answer Input::read(const std::wstring& promptLine, Extent extent, bool atCommandPrompt) {
    if (std::optional<Answer> given = fromGiven(promptLine)) return *given;

    Answer answer;
    bool echo = true;
    switch (fromSent(extent, atCommandPrompt, answer.text, echo)) {
        case Taken::Cancel:
            answer.reply = Reply::Cancel;
            answer.unseen = !echo;
            return answer;
        case Taken::Whole:
            if (echo) show(promptLine, answer.text);
            return answer;
        case Taken::Part:
        case Taken::Nothing:
            break;
    }
    answer.typed = true;
    if (rest_) {
        answer.text += takeTyped(*std::exchange(rest_, std::nullopt), extent);
        show(promptLine, answer.text);
        readOn(answer, extent);
        return answer;
    }
    std::wstring line;
    answer.reply = output_.terminal().readLine(promptLine + answer.text, line);
    if (answer.reply == Reply::Line) {
        output_.answered();
        line.insert(0, answer.text);
        if (!takeCancel(line)) {
            answer.text = takeTyped(std::move(line), extent);
            readOn(answer, extent);
            return answer;
        }
        answer.reply = Reply::Cancel;
        answer.promptShown = true;
    } else if (answer.reply == Reply::Cancel) {
        output_.leftOpen();
        answer.promptShown = true;
    }
    answer.discarded = answer.reply == Reply::Cancel && !line.empty();
    answer.text.clear();
    return answer;
}

// An expression takes further lines until its last parenthesis. An empty one breaks it off, and is Enter in a script:
// an answer that somebody forgot to close shall not take all that follows it.
void Input::readOn(Answer& answer, Extent extent) {
    if (extent != Extent::Word || !isOpenExpression(answer.text)) return;
    // Each line is looked at once: there may be many.
    Parentheses parentheses;
    parentheses.take(answer.text);
    while (parentheses.isOpen()) {
        std::wstring line;
        const Reply reply = output_.terminal().readMore(line);
        if (reply == Reply::End) return;
        if (reply == Reply::Line) output_.answered();
        if (reply == Reply::Cancel || takeCancel(line)) {
            if (reply == Reply::Cancel) output_.leftOpen();
            answer.reply = Reply::Cancel;
            answer.promptShown = true;
            answer.discarded = true;
            answer.text.clear();
            return;
        }
        if (std::all_of(line.begin(), line.end(), &isBlank)) {
            if (!output_.terminal().isInteractive()) rest_.emplace();
            return;
        }
        line = L'\n' + withoutBlanksAtEnd(std::move(line));
        std::size_t length = 0;
        for (; length < line.size() && (parentheses.isOpen() || !isBlank(line[length])); ++length)
            parentheses.take(line[length]);
        if (length < line.size()) rest_ = line.substr(line.find_first_not_of(kBlanks, length));
        answer.text.append(line, 0, length);
    }
}

void Input::show(const std::wstring& promptLine, const std::wstring& text) {
    output_.print(promptLine + text + L"\n");
}

std::optional<Answer> Input::fromGiven(const std::wstring& promptLine) {
    if (given_.empty() || !given_.back()) return std::nullopt;
    std::deque<std::wstring>& answers = *given_.back();
    Answer answer;
    if (answers.empty()) {
        answer.reply = Reply::Cancel;
        return answer;
    }
    answer.text = std::move(answers.front());
    answers.pop_front();
    if (answer.text == L"\\") return std::nullopt;
    if (echo_) show(promptLine, answer.text);
    return answer;
}

Input::Taken Input::fromSent(Extent extent, bool skipEmpty, std::wstring& text, bool& echo) {
    bool any = false;
    while (!sent_.empty()) {
        Sent& front = sent_.front();
        const bool sentEcho = front.echo;
        const wchar_t c = front.text[front.position++];
        if (front.position == front.text.size()) sent_.pop_front();
        if (c == kEscape) {
            text.clear();
            echo = sentEcho;
            return Taken::Cancel;
        }
        const bool isWord = extent == Extent::Word;
        const bool ends = (c == L'\n' || (isWord && isBlank(c))) && !(isWord && isOpenExpression(text));
        if (!ends) {
            text += c;
            any = true;
            echo = sentEcho;
        } else if (any || !skipEmpty) {
            if (!any) echo = sentEcho;
            return Taken::Whole;
        }
    }
    return any ? Taken::Part : Taken::Nothing;
}

std::wstring Input::takeTyped(std::wstring line, Extent extent) {
    if (extent == Extent::Line) return line;
    line = withoutBlanksAtEnd(std::move(line));
    line.erase(0, line.find_first_not_of(kBlanks));
    const std::size_t length = wordLength(line);
    if (length < line.size()) {
        rest_ = line.substr(line.find_first_not_of(kBlanks, length));
        line.resize(length);
    }
    return line;
}

void Input::send(AcApDocument* document, std::wstring_view text, bool echo, bool commandRuns) {
    std::wstring typed = asTyped(text);
    if (typed.empty()) return;
    (commandRuns ? waiting_ : sent_).push_back(Sent{document, std::move(typed), 0, echo});
}

void Input::releaseWaiting() {
    std::move(waiting_.begin(), waiting_.end(), std::back_inserter(sent_));
    waiting_.clear();
}

void Input::forget(const AcApDocument* document) {
    for (std::deque<Sent>* queue : {&sent_, &waiting_})
        queue->erase(
            std::remove_if(queue->begin(), queue->end(), [&](const Sent& sent) { return sent.document == document; }),
            queue->end());
}

}  // namespace qrs::host::ed
