// Where the answers of the command line come from: what a program gave with a command it calls, texts sent to be typed,
// the words left on the line typed last, and then the terminal.
#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/editor/output.h"

class AcApDocument;

namespace qrs::host::ed {

// Word: a blank ends the answer as the end of the line does. Line: blanks belong to it.
enum class Extent { Word, Line };

struct Answer {
    Reply reply = Reply::Line;
    std::wstring text;
    bool typed = false;        // by the user, not sent or given
    bool promptShown = false;  // for Cancel: its prompt stands on the line, which is still open
    bool discarded = false;    // for Cancel: something had been typed already
    bool unseen = false;       // for Cancel: a program sent it, not to be seen
};

class Input {
  public:
    explicit Input(Output& output) : output_(output) {}

    // Asks with the last line of a prompt; what is answered without the terminal is printed after it.
    // atCommandPrompt: empty words of a sent text are passed over.
    Answer read(const std::wstring& promptLine, Extent extent, bool atCommandPrompt);

    // A text to be typed. While a command runs it waits for the command's end.
    void send(AcApDocument* document, std::wstring_view text, bool echo, bool commandRuns);
    // The running command has ended: what was sent meanwhile follows what is still to be typed.
    void releaseWaiting();
    // The document whose text is typed next; null when nothing is.
    AcApDocument* nextDocument() const { return sent_.empty() ? nullptr : sent_.front().document; }
    void forget(const AcApDocument* document);
    // The next answer comes from a text that was sent to be typed unseen.
    bool isUnseenNext() const { return (given_.empty() || !given_.back()) && !sent_.empty() && !sent_.front().echo; }

    // The words left on the typed line.
    std::wstring takeTypedWords() { return std::exchange(rest_, std::nullopt).value_or(std::wstring()); }
    // They are no answers any more.
    void dropTypedWords() { rest_.reset(); }

    // The answers of a command called by a program; nothing: its prompts are answered from outside.
    void pushGiven(std::optional<std::deque<std::wstring>> answers) { given_.push_back(std::move(answers)); }
    void popGiven() { given_.pop_back(); }
    // Printing of given answers (the system variable CMDECHO).
    void setEcho(bool echo) { echo_ = echo; }

  private:
    struct Sent {
        AcApDocument* document;
        std::wstring text;
        std::size_t position;
        bool echo;
    };
    enum class Taken { Nothing, Part, Whole, Cancel };

    // Null: the answer is to come from the user.
    std::optional<Answer> fromGiven(const std::wstring& promptLine);
    Taken fromSent(Extent extent, bool skipEmpty, std::wstring& text, bool& echo);
    std::wstring takeTyped(std::wstring line, Extent extent);
    void readOn(Answer& answer, Extent extent);
    void show(const std::wstring& promptLine, const std::wstring& text);

    Output& output_;
    std::vector<std::optional<std::deque<std::wstring>>> given_;
    std::deque<Sent> sent_;
    std::deque<Sent> waiting_;
    std::optional<std::wstring> rest_;
    bool echo_ = true;
};

// Keeps the answers of a called command for its run.
class GivenAnswers {
  public:
    GivenAnswers(Input& input, std::optional<std::deque<std::wstring>> answers) : input_(input) {
        input_.pushGiven(std::move(answers));
    }
    ~GivenAnswers() { input_.popGiven(); }
    GivenAnswers(const GivenAnswers&) = delete;
    GivenAnswers& operator=(const GivenAnswers&) = delete;

  private:
    Input& input_;
};

}  // namespace qrs::host::ed
