// Keeps the groups in a list, the top of the stack first, and finds commands in it by name.
#include <algorithm>
#include <list>
#include <string>
#include <utility>
#include <vector>

#include "accmd.h"
#include "host/editor/reactors.h"
#include "host/platform/callrecord.h"
#include "host/platform/codepage.h"

ACRX_DEFINE_MEMBERS(AcEdCommand, AcRxObject)
ACRX_DEFINE_MEMBERS(AcEdCommandStack, AcRxObject)

using qrs::platform::compareNoCase;
using qrs::platform::recordCall;

struct AcEdCommand::Fields {
    std::wstring globalName;
    std::wstring localName;
    Adesk::Int32 flags;
    AcRxFunctionPtr function;
    const void* application;
};

AcEdCommand::AcEdCommand(std::unique_ptr<Fields> fields) : fields_(std::move(fields)) {}
AcEdCommand::~AcEdCommand() = default;

const ACHAR* AcEdCommand::globalName() const {
    return fields_->globalName.c_str();
}
const ACHAR* AcEdCommand::localName() const {
    return fields_->localName.c_str();
}
Adesk::Int32 AcEdCommand::commandFlags() const {
    return fields_->flags;
}
AcRxFunctionPtr AcEdCommand::functionAddr() const {
    return fields_->function;
}
void* AcEdCommand::commandApp() const {
    return const_cast<void*>(fields_->application);
}

namespace {

struct Group {
    std::wstring name;
    std::vector<std::unique_ptr<AcEdCommand>> commands;
};

bool same(const std::wstring& a, const ACHAR* b) {
    return compareNoCase(a, b) == 0;
}

bool isEmpty(const ACHAR* text) {
    return !text || !*text;
}

AcEdCommand* findIn(const Group& group, const ACHAR* name, bool globalName) {
    for (const auto& command : group.commands)
        if (same(globalName ? command->globalName() : command->localName(), name)) return command.get();
    return nullptr;
}

class CommandIterator : public AcEdCommandIterator {
  public:
    explicit CommandIterator(const std::list<Group>& groups) {
        for (const Group& group : groups)
            for (const auto& command : group.commands)
                items_.emplace_back(group.name, command.get());
    }
    bool done() const override { return position_ >= items_.size(); }
    bool next() override {
        if (!done()) ++position_;
        return !done();
    }
    const AcEdCommand* command() const override { return done() ? nullptr : items_[position_].second; }
    const ACHAR* commandGroup() const override { return done() ? nullptr : items_[position_].first.c_str(); }

  private:
    std::vector<std::pair<std::wstring, const AcEdCommand*>> items_;
    std::size_t position_ = 0;
};

}  // namespace

// The front of the list is the top of the stack.
struct AcEdCommandStack::Groups {
    std::list<Group> list;

    std::list<Group>::iterator find(const ACHAR* name) {
        return std::find_if(list.begin(), list.end(), [&](const Group& group) { return same(group.name, name); });
    }
    AcEdCommand* lookup(const ACHAR* name, bool globalName) const {
        if (isEmpty(name)) return nullptr;
        for (const Group& group : list)
            if (AcEdCommand* command = findIn(group, name, globalName)) return command;
        return nullptr;
    }
};

AcEdCommandStack::AcEdCommandStack() : groups_(std::make_unique<Groups>()) {}
AcEdCommandStack::~AcEdCommandStack() = default;

Acad::ErrorStatus AcEdCommandStack::addCommand(const ACHAR* groupName, const ACHAR* globalName, const ACHAR* localName,
                                               Adesk::Int32 commandFlags, AcRxFunctionPtr function, AcEdUIContext*, int,
                                               HINSTANCE, AcEdCommand** command) {
    recordCall("AcEdCommandStack::addCommand", groupName, globalName, localName, commandFlags);
    if (command) *command = nullptr;
    if (isEmpty(groupName) || isEmpty(globalName) || isEmpty(localName) || !function) return Acad::eInvalidInput;
    auto group = groups_->find(groupName);
    if (group != groups_->list.end() && findIn(*group, globalName, true)) return Acad::eDuplicateKey;
    if (group == groups_->list.end()) {
        groups_->list.push_front(Group{groupName, {}});
        group = groups_->list.begin();
    }
    auto fields = std::make_unique<AcEdCommand::Fields>(
        AcEdCommand::Fields{globalName, localName, commandFlags, function, qrs::host::ed::activeApplication()});
    group->commands.push_back(std::unique_ptr<AcEdCommand>(new AcEdCommand(std::move(fields))));
    if (command) *command = group->commands.back().get();
    return Acad::eOk;
}

Acad::ErrorStatus AcEdCommandStack::removeCmd(const ACHAR* groupName, const ACHAR* globalName) {
    recordCall("AcEdCommandStack::removeCmd", groupName, globalName);
    if (isEmpty(groupName) || isEmpty(globalName)) return Acad::eInvalidInput;
    const auto group = groups_->find(groupName);
    if (group == groups_->list.end()) return Acad::eKeyNotFound;
    auto& commands = group->commands;
    const auto found = std::find_if(commands.begin(), commands.end(),
                                    [&](const auto& command) { return same(command->globalName(), globalName); });
    if (found == commands.end()) return Acad::eKeyNotFound;
    commands.erase(found);
    if (commands.empty()) groups_->list.erase(group);
    return Acad::eOk;
}

Acad::ErrorStatus AcEdCommandStack::removeGroup(const ACHAR* groupName) {
    recordCall("AcEdCommandStack::removeGroup", groupName);
    if (isEmpty(groupName)) return Acad::eInvalidInput;
    const auto group = groups_->find(groupName);
    if (group == groups_->list.end()) return Acad::eKeyNotFound;
    groups_->list.erase(group);
    return Acad::eOk;
}

AcEdCommand* AcEdCommandStack::lookupGlobalCmd(const ACHAR* name) const {
    return groups_->lookup(name, true);
}

AcEdCommand* AcEdCommandStack::lookupLocalCmd(const ACHAR* name) const {
    return groups_->lookup(name, false);
}

AcEdCommandIterator* AcEdCommandStack::iterator() const {
    return new CommandIterator(groups_->list);
}

std::size_t AcEdCommandStack::removeCommandsOf(const void* application) {
    std::size_t count = 0;
    for (auto group = groups_->list.begin(); group != groups_->list.end();) {
        auto& commands = group->commands;
        const auto rest = std::remove_if(commands.begin(), commands.end(),
                                         [&](const auto& command) { return command->commandApp() == application; });
        count += static_cast<std::size_t>(commands.end() - rest);
        commands.erase(rest, commands.end());
        group = commands.empty() ? groups_->list.erase(group) : std::next(group);
    }
    return count;
}
