// The layer commands. One object of the class serves them all; it carries nothing from one command to the next.
#pragma once

class CLayerToolBar {
  public:
    // The one object, made on first use.
    static CLayerToolBar& Instance();
    // Deletes it, if it was made.
    static void Release();
    // How many were made since the module came into the process.
    static int TimesMade();

    // Thaws every frozen layer.
    void UnFrozenAllLayer();
    // Asks for entities and unlocks their layers; all layers after Enter, none after Esc.
    void UnLockSelLayer();
    // Turns every layer on, shows every pipe system, makes hidden objects of model space visible.
    void SetAllPipeLayOpen();

    // For the commands that freeze in viewports: true, with a message, in model space, where there are none.
    bool RefuseInModelSpace();

  private:
    CLayerToolBar();
    ~CLayerToolBar() = default;
};
