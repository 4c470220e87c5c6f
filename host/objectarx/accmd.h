// Commands and the stack of groups they are registered in.
//
//     AcEdCommandStack* commands = acedRegCmds;
//     if (commands) commands->addCommand(L"MY_GROUP", L"MYCMD", L"MYCMD", ACRX_CMD_MODAL, &myCommand);
#pragma once

#include <cstddef>
#include <memory>

#include "acadstrc.h"
#include "adesk.h"
#include "rxdict.h"

struct HINSTANCE__;
typedef HINSTANCE__* HINSTANCE;

class AcEdUIContext;

// Command flags: run alone, or inside another command's prompts ("'NAME"); may use the pick-first set; redraws it
// afterwards; not in model space; not in a layout; runs without a drawing and without locking it.
#define ACRX_CMD_MODAL 0x00000000
#define ACRX_CMD_TRANSPARENT 0x00000001
#define ACRX_CMD_USEPICKSET 0x00000002
#define ACRX_CMD_REDRAW 0x00000004
// It begins no step of undo.
#define ACRX_CMD_NOUNDOMARKER 0x00000010
#define ACRX_CMD_NOTILEMODE 0x00000020
#define ACRX_CMD_NOPAPERSPACE 0x00000040
#define ACRX_CMD_SESSION 0x00200000

#define ACED_REGISTERED_COMMANDS ACRX_T("ACAD_REGISTERED_COMMANDS")
#define acedRegCmds AcEdCommandStack::cast(acrxSysRegistry()->at(ACED_REGISTERED_COMMANDS))

typedef void (*AcRxFunctionPtr)();

// One registered command; owned by the stack, valid until it is removed.
class QRS_HOST_PORT AcEdCommand : public AcRxObject {
  public:
    ACRX_DECLARE_MEMBERS(AcEdCommand);
    ~AcEdCommand() override;
    AcEdCommand(const AcEdCommand&) = delete;
    AcEdCommand& operator=(const AcEdCommand&) = delete;

    const ACHAR* globalName() const;
    const ACHAR* localName() const;
    Adesk::Int32 commandFlags() const;
    AcRxFunctionPtr functionAddr() const;
    // The handle of the plug-in that registered it; null for the editor's own commands.
    void* commandApp() const;

  private:
    friend class AcEdCommandStack;
    struct Fields;
    explicit AcEdCommand(std::unique_ptr<Fields> fields);
    std::unique_ptr<Fields> fields_;
};

// Walks all commands, the top group first, within a group in the order of registration.
class QRS_HOST_PORT AcEdCommandIterator : public AcRxObject {
  public:
    virtual bool done() const = 0;
    // False when there is no further command.
    virtual bool next() = 0;
    virtual const AcEdCommand* command() const = 0;
    virtual const ACHAR* commandGroup() const = 0;
};

// Groups of commands. A group comes into being with its first command and then lies on top of the others; a name is
// looked up from the top down. Group and command names compare without regard to case.
class QRS_HOST_PORT AcEdCommandStack : public AcRxObject {
  public:
    ACRX_DECLARE_MEMBERS(AcEdCommandStack);
    AcEdCommandStack();
    ~AcEdCommandStack() override;
    AcEdCommandStack(const AcEdCommandStack&) = delete;
    AcEdCommandStack& operator=(const AcEdCommandStack&) = delete;

    // eInvalidInput for a null or empty name or a null function; eDuplicateKey when the group holds the global name.
    Acad::ErrorStatus addCommand(const ACHAR* groupName, const ACHAR* globalName, const ACHAR* localName,
                                 Adesk::Int32 commandFlags, AcRxFunctionPtr function, AcEdUIContext* context = nullptr,
                                 int fcode = -1, HINSTANCE resourceHandle = nullptr, AcEdCommand** command = nullptr);
    // eKeyNotFound when the group does not exist or does not hold the command. An emptied group disappears.
    Acad::ErrorStatus removeCmd(const ACHAR* groupName, const ACHAR* globalName);
    Acad::ErrorStatus removeGroup(const ACHAR* groupName);

    // Null when no group holds the name.
    AcEdCommand* lookupGlobalCmd(const ACHAR* name) const;
    AcEdCommand* lookupLocalCmd(const ACHAR* name) const;

    // The caller deletes it. It sees the commands of the moment it was made.
    AcEdCommandIterator* iterator() const;

#ifndef QRS_PUBLISHED_ONLY
    // Removes what a plug-in left behind; the number of commands removed.
    std::size_t removeCommandsOf(const void* application);
#endif  // QRS_PUBLISHED_ONLY

  private:
    struct Groups;
    std::unique_ptr<Groups> groups_;
};
