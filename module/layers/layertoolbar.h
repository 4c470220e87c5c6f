// The layer commands. One object of the class serves them all; it carries nothing from one command to the next.
#pragma once

// Every command works on the current drawing, which its caller has locked. Esc at a prompt ends a command without a
// message; what was changed before stays changed. A layer that cannot be opened is passed over. A pick that meets
// nothing is asked again.
//
// Objects on a locked layer are not changed, as in the editor: commands that would move or erase them leave them.
// Layers of external references take no objects and are not erased.
class CLayerToolBar {
  public:
    // The one object, made on first use.
    static CLayerToolBar& Instance();
    // Deletes it, if it was made.
    static void Release();

    // --- on and off
    // Asks for objects one by one and turns their layers off; of a pipe layer also the layer of its diameter texts.
    // Picks inside external references, too.
    void CloseSelLayer();
    // Asks for objects; their layers alone stay on.
    void OpenSelLayer();
    // Turns on the layers chosen among those that are off.
    void OpenLayer();
    // Turns every layer on, shows every pipe system, makes hidden objects of model space visible.
    void SetAllPipeLayOpen();

    // --- locks
    // Asks for objects and locks their layers.
    void LockSelLayer();
    // Asks for objects and unlocks their layers; all layers after Enter, none after Esc.
    void UnLockSelLayer();
    // Asks for objects; their layers become unlocked, all others locked. A pipe brings along the layers of its
    // attachments and of the nodes at its ends.
    void LockOtherLayers();

    // --- freezing
    // Asks for objects one by one and freezes their layers.
    void FrozenLayer();
    // Thaws every frozen layer.
    void UnFrozenAllLayer();
    // Asks for viewports, to freeze layers chosen from a list in them, or objects seen through the current viewport, to
    // freeze their layers in it; what lies on the sheet itself is told so. Not in model space.
    void FrozenViewLayer();
    // Asks for a viewport and thaws in it layers chosen from a list. Not in model space.
    void UnFrozenViewAllLayer();

    // --- what lies on layers: in model space and every layout, not in block definitions
    // Asks for objects and erases everything on their layers.
    void EraseSelLayer();
    // Asks for an object of each of two layers and moves everything from the one to the other.
    void ConvertLayer();
    // The same, and the first layer is erased, when nothing else needs it.
    void MergeLayer();

    // --- colours
    // Gives all layers, or those chosen, one colour and keeps their old ones in the drawing.
    void SetOneColor();
    // Gives layers the colours back that SetOneColor kept.
    void RestoreColor();

    // --- the standard's layers
    // The dialog that takes the settings of an object's layer over into the standard.
    void PickUpLayer();
    // Writes the standard's layer definitions into a text file beside the drawing.
    void ExportLayer();
    // Brings the layers of the systems "BIM" and "BIM喷头" into the drawing and their objects onto them.
    void CollectBimLayer();

  private:
    CLayerToolBar();
    ~CLayerToolBar() = default;
};
