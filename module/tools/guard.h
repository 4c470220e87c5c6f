// Keeps what the module's functions throw inside the module.
#pragma once

#include <exception>

namespace qrs::tools {

// Tells that something failed, with its reason (null: none known), as one error; the running command has failed then.
void tellFailure(const std::exception* reason) noexcept;

// Calls; the editor cannot take exceptions, so each becomes a message and the caller goes on. False when there was one.
template <typename Call>
bool guarded(Call&& call) noexcept {
    try {
        call();
        return true;
    } catch (const std::exception& exception) {
        tellFailure(&exception);
    } catch (...) {
        tellFailure(nullptr);
    }
    return false;
}

}  // namespace qrs::tools
