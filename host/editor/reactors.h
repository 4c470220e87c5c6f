// Lists of reactors, safe against those that come and go while they are being told something.
#pragma once

#include <algorithm>
#include <cstddef>
#include <exception>
#include <string>
#include <utility>
#include <vector>

namespace qrs::host::ed {

// The plug-in whose code runs now; null for the editor's own. What it registers is noted as its own, so that nothing of
// it stays behind when it goes.
const void* activeApplication();

class ApplicationScope {
  public:
    explicit ApplicationScope(const void* application);
    ~ApplicationScope();
    ApplicationScope(const ApplicationScope&) = delete;
    ApplicationScope& operator=(const ApplicationScope&) = delete;

    const void* application() const { return application_; }
    const ApplicationScope* outer() const { return outer_; }

  private:
    const void* application_;
    const ApplicationScope* outer_;
};

// True when some call of the plug-in has not returned yet: a message, a command, a reactor.
bool isAtWork(const void* application);

// Tells of an exception that a plug-in let out; one line. Null: a reactor of its.
void reportException(const wchar_t* where, const std::exception* exception);

// Calls into a plug-in; nothing it throws comes out. False when it threw.
template <typename Call>
bool callOutside(const void* application, const wchar_t* where, Call&& call) {
    const ApplicationScope scope(application);
    try {
        std::forward<Call>(call)();
        return true;
    } catch (const std::exception& exception) {
        reportException(where, &exception);
    } catch (...) {
        reportException(where, nullptr);
    }
    return false;
}

template <typename Reactor>
class ReactorList {
  public:
    void add(Reactor* reactor) {
        if (reactor && !has(reactor)) items_.push_back(Item{reactor, activeApplication()});
    }
    void remove(Reactor* reactor) {
        items_.erase(
            std::remove_if(items_.begin(), items_.end(), [&](const Item& item) { return item.reactor == reactor; }),
            items_.end());
    }
    // The number of those that were removed.
    std::size_t removeOf(const void* application) {
        const auto rest = std::remove_if(items_.begin(), items_.end(),
                                         [&](const Item& item) { return item.application == application; });
        const std::size_t count = static_cast<std::size_t>(items_.end() - rest);
        items_.erase(rest, items_.end());
        return count;
    }
    bool has(const Reactor* reactor) const {
        return std::any_of(items_.begin(), items_.end(), [&](const Item& item) { return item.reactor == reactor; });
    }

    template <typename Call>
    void tell(Call&& call) {
        const std::vector<Item> now = items_;
        for (const Item& item : now)
            if (has(item.reactor)) callOutside(item.application, nullptr, [&] { call(*item.reactor); });
    }

  private:
    struct Item {
        Reactor* reactor;
        const void* application;
    };
    std::vector<Item> items_;
};

}  // namespace qrs::host::ed
