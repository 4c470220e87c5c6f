// The tree of a pipe-system standard: groups of pipe systems, their systems and layers, and the groups of other layers.
//
//     PipeGroupNode group(L"给水系统", true);
//     auto* system = new PipeNode;
//     system->PipeName = L"生活给水";
//     auto* pipe = new LayerNode;
//     pipe->LayerType = L"管线";
//     pipe->LayerName = L"W-给水-管线";
//     system->AddLayerNode(pipe);      // the system owns the layer from here on
//     group.AddPipeSystem(system);     // and the group the system
//     LayerNode* bend = system->FindLayerNode(L"扣弯");   // answered by the layer of "管线"
//
// Ownership runs strictly downward: a group deletes its systems, a system and a group of other layers delete their
// layers. A pointer that a function hands out stays the tree's; it is valid until its node is deleted.
//
// Layer types, pipe-system names and group names are exact keys. Layer names compare without regard to case. Lists of
// layer names hold no name twice (without regard to case) and keep the order in which names were first seen. Ordered
// maps are ordered by the code units of their keys. Nothing here throws on a miss: each function states its answer.
#pragma once

#include <map>
#include <memory>
#include <set>
#include <vector>

#include "acdb.h"
#include "adesk.h"
#include "afx.h"
#include "dbcolor.h"
#include "dbid.h"
#include "NodeName.h"
#include "pipeport.h"

namespace qrs::standard {
struct LayerLookUp;
class SystemIndex;
struct IndexEntry;
}  // namespace qrs::standard

// Orders layer names as they compare: without regard to case.
struct LayerNameLess {
    bool operator()(const CString& a, const CString& b) const { return a.CompareNoCase(b) < 0; }
};

// One definition of a layer. A plain value: it may be copied freely.
struct QRS_PIPE_PORT LayerNode {
    CString OldKey;      // key of the layer in older standards
    NodeName LayerType;  // its role, the key under which its owner finds it; fixed while an owner holds the layer
    CString SystemName;  // PipeName of the pipe system that owns it; empty in groups of other layers
    NodeName LayerName;  // name of the layer in the drawing
    AcCmColor LayerColor;
    CString LineStyle;                                 // name of the linetype
    Adesk::Int32 LineWeight = AcDb::kLnWtByLwDefault;  // hundredths of a millimetre; -1 by layer, -2 by block
    CString Remark;
    bool CanDel = false;
    bool CanPlot = true;                  // a file that does not say so means false
    std::vector<CString> LayerAttachSet;  // names of attachments it is part of; the shipped 管道, 附件, 设备, 注释

    // Whether the attachment of that name (exactly compared) is in LayerAttachSet.
    bool IsContainLayerAttach(const CString& name) const;

    // The working database's layer of this name. A layer that the drawing has already stays as it is; a missing one is
    // made with this colour, lineweight, plot flag and linetype, and *created (which may be null) becomes true; it is
    // not touched otherwise. What no layer has becomes what a new one has: by-layer and by-block the colour 7, the
    // default lineweight and "Continuous", which also stands in for a linetype that cannot be loaded. The null id when
    // the layer cannot be made: no drawing, or no name that a layer may have.
    AcDbObjectId CreateLayer(bool* created = nullptr) const;
};

// Layers by name. Of several layers of one name the first one seen is held.
using LayerNameMap = std::map<CString, LayerNode*, LayerNameLess>;

// Which material of a system is meant.
enum PipeMaterialEnum {
    kIndoorMaterial = 0,
    kOutdoorMaterial = 1,
};

// Which layers of an attachment are meant; the values are flags.
enum LayerTypeEnum {
    kPipeSystemLayer = 1,
    kNonPipeSystemLayer = 2,
    kAllLayer = kPipeSystemLayer | kNonPipeSystemLayer,
};

// The layers that take part in one layer attachment.
class QRS_PIPE_PORT LayerAttachNode {
  public:
    // Names a layer of a pipe system.
    struct PipeLayerKey {
        CString SystemName;
        CString LayerType;
        CString LayerName;
    };

    void AddPipeSystemLayerNode(const LayerNode& layer);
    void AddNonPipeSystemLayerNode(const LayerNode& layer);

    const std::vector<PipeLayerKey>& PipeSystemLayers() const { return pipeSystemLayers_; }
    const std::vector<LayerNode>& NonPipeSystemLayers() const { return nonPipeSystemLayers_; }

    // The names of the layers that which selects, those of pipe systems first, with the separator between them and none
    // before the first. out is replaced; it is empty when there is no such layer.
    void LayerNames(LayerTypeEnum which, CString& out, const CString& separator) const;

  private:
    std::vector<PipeLayerKey> pipeSystemLayers_;
    std::vector<LayerNode> nonPipeSystemLayers_;
};

// Where systems tell of their vertical pipes' symbol, VPipeType 0 is one circle of VPipeRaidus, 1 is two circles, of
// VPipeRaidus1 outside and VPipeRaidus2 inside; other numbers are kept for those who know them. Status is for callers,
// too: the module stores it and gives it no meaning; 0 in the shipped standard.

// What one pipe system says of itself, carried out of the tree. The first values are what a system's queries answer
// when there is no such system.
struct QRS_PIPE_PORT PipeInfoNode {
    CString PipeName;
    CString PipeOriginalName;
    double LineWidth = 0.35;  // drawn width, millimetres on paper
    CString Dim;              // label text, perhaps of two parts with a "/" between them
    CString Material;         // indoors
    CString OutdoorMaterial;
    Adesk::Int32 VPipeType = 0;  // symbol of the vertical pipe, see above
    double VPipeRaidus = 0.5;    // radii of that symbol, millimetres on paper
    double VPipeRaidus1 = 0.5;
    double VPipeRaidus2 = 0.25;
    CString WaterFlowStatus;
    CString Remark;
    Adesk::UInt32 Status = 0;
    std::map<CString, CString> LayerNames;  // layer type -> layer name
};

// What one group says of itself and its systems, in the group's order.
struct QRS_PIPE_PORT PipeClassificationNode {
    CString GroupName;
    bool CanName = false;
    std::vector<PipeInfoNode> Systems;
};

// What a list of systems shows of one.
struct QRS_PIPE_PORT PipeBasicNode {
    CString PipeName;
    CString PipeOriginalName;
    CString Dim;
    CString Remark;
    bool CanDel = false;
    bool CanName = false;
};

// One text style setting of a standard.
struct QRS_PIPE_PORT TextStyleNode {
    CString Key;               // which kind of text
    CString Name;              // name of the text style in the drawing
    CString ChineseFont;       // big font of a shape-font style, typeface of a Windows-font style
    CString EnglishFont;       // main font of a shape-font style
    Adesk::UInt8 WinFont = 0;  // not 0: a Windows font
    double FontHeigth = 0.0;   // millimetres on paper: times the plot scale it is the height in the drawing
    double WHScale = 0.0;      // width divided by height
    Adesk::UInt8 Bold = 0;
    Adesk::UInt8 Italic = 0;
    CString Encoded = CString(L"CHINESE_GB2312");  // character set
};

// One pipe system. Its name is changed through its group, which keeps the index and the layers in step.
class QRS_PIPE_PORT PipeNode : private NodeNameOwner {
  public:
    NodeName PipeOriginalName;  // name in the suite's older naming; empty for a system without one
    NodeName PipeName;
    double LineWidth = 0.0;  // drawn width, millimetres on paper
    CString Dim;             // label text, perhaps of two parts with a "/" between them
    CString Material;        // indoors
    CString OutdoorMaterial;
    Adesk::Int32 VPipeType = 0;  // symbol of the vertical pipe, see PipeInfoNode
    double VPipeRaidus = 0.0;    // radii of that symbol, millimetres on paper
    double VPipeRaidus1 = 0.5;
    double VPipeRaidus2 = 0.25;
    CString WaterFlowStatus;
    CString Remark;
    bool CanDel = false;   // the user may delete the system
    bool CanName = false;  // the user may rename it
    Adesk::Int32 Status = 0;

    // A system without layers that starts with the default layer-type map.
    PipeNode();
    ~PipeNode() override;
    PipeNode(const PipeNode&) = delete;
    PipeNode& operator=(const PipeNode&) = delete;

    // Takes ownership of the layer; it answers for its type from now on, also when the type had a layer or an alias.
    // A layer without a system name gets this system's. A null pointer changes nothing.
    void AddLayerNode(LayerNode* layer);
    // The same for many, in their order.
    void AddLayerNodes(std::vector<std::unique_ptr<LayerNode>> layers);
    // Deletes an own layer and drops the aliases that borrowed it. Any other pointer changes nothing.
    // Another own layer of the type, if there is one, answers from then on.
    void DelLayerNode(LayerNode* layer);

    // The layer that answers for the type: the system's own, else the one of the generic type that the layer-type map
    // gives for it. Null when there is none.
    LayerNode* FindLayerNode(const CString& layerType) const;
    // The own layer at a position, from 0; null outside.
    LayerNode* FindLayerNode(int index) const;
    // The first own layer of that name; null when there is none.
    LayerNode* FindLayerNodeByLayerName(const CString& layerName) const;
    // Number of own layers.
    int GetLayerNum() const;
    // Number of types that a layer of this name answers for: a borrowed layer counts once for each type.
    int CountLayer(const CString& layerName) const;
    // Whether the type has no own layer and borrows that of its generic type.
    bool IsAlias(const CString& layerType) const;

    // Add what the system holds: its own layers under their names, the names, the types of its own layers.
    void GetAllLayer(LayerNameMap& layers) const;
    void GetAllLayerName(std::vector<CString>& names) const;
    void GetLayerTypes(std::set<CString>& types) const;
    // Adds each own layer that takes part in the attachment.
    void GetLayerAttachInfo(const CString& attachment, LayerAttachNode& info) const;
    // LayerNode::CreateLayer of the first own layer of that name; *found (which may be null) becomes true when there is
    // one and is not touched otherwise. The null id when there is none.
    AcDbObjectId CreateLayer(const CString& layerName, bool* found = nullptr) const;
    // Replaces info by what the system says of itself; LayerNames holds alias types only when includeAliases is true.
    void GetPipeInfo(PipeInfoNode& info, bool includeAliases) const;

    // The layer-type map: specific type -> generic type.
    const std::map<CString, CString>& LayerTypeMap() const { return *typeMap_; }
    // Sets one entry; UpdateLayerTypeMap makes it count.
    void SetLayerTypeMapping(const CString& specificType, const CString& genericType);
    // Makes the aliases anew: every type of the map without an own layer borrows the own layer of its generic type, if
    // there is one. An alias is no layer of its type, so aliases do not chain.
    void UpdateLayerTypeMap();
    // Whether the map has the type and gives for it what it gave at the beginning.
    bool IsDefaultMapping(const CString& specificType) const;

    // The own layer that answers for the source's type takes over every setting of the source but its type and its
    // system name. False when the system has no own layer of the type.
    bool UpdateLayer(const LayerNode& source);
    // Pushes this system's own layers into the target: a type the target has is updated as by UpdateLayer, one it lacks
    // is added. Layers of other types stay. A null pointer changes nothing.
    void UpdateLayerTo(PipeNode* target) const;

    // Becomes a deep copy of the source; a null pointer changes nothing.
    void CopyFrom(const PipeNode* source);
    // A deep copy; the caller owns it.
    PipeNode* Clone() const;

  private:
    friend class PipeGroupNode;
    friend class qrs::standard::SystemIndex;

    // The layer that answers for a type.
    struct Answer {
        LayerNode* layer = nullptr;
        bool isAlias = false;  // borrowed from the generic type
    };

    void NameChanges() override;
    void TakeLayer(std::unique_ptr<LayerNode> layer);
    LayerNode* OwnLayerOfType(const CString& layerType) const;

    std::map<CString, Answer> layersByType_;  // own layers and aliases
    std::vector<std::unique_ptr<LayerNode>> layers_;
    std::shared_ptr<const std::map<CString, CString>> typeMap_;  // one for all systems that keep the defaults
    std::unique_ptr<qrs::standard::IndexEntry> entry_;           // while a group holds the system
};

// One group of pipe systems, in the order in which they are shown and stored.
class QRS_PIPE_PORT PipeGroupNode {
  public:
    explicit PipeGroupNode(const CString& groupName = CString(), bool canRename = false);
    ~PipeGroupNode();
    PipeGroupNode(const PipeGroupNode&) = delete;
    PipeGroupNode& operator=(const PipeGroupNode&) = delete;

    const CString& GroupName() const { return name_; }
    // Whether the group's systems may be renamed.
    bool CanRename() const { return canName_; }
    // Whether it comes before the other one in their standard.
    bool IsBefore(const PipeGroupNode& other) const { return place_ < other.place_; }

    // Takes ownership of the system and appends it. The caller makes sure that its name is free in the group. A null
    // pointer changes nothing.
    void AddPipeSystem(PipeNode* system);
    // Takes the system out of the group; the caller, who found it before, owns it from then on.
    // False when the group has no system of that name.
    bool DeletePipeSystem(const CString& name);
    // Swaps the system with its neighbour above (up) or below. False, found untouched, when there is no such system;
    // false, found set, for the first one up and the last one down.
    bool MovePipeSystem(const CString& name, bool up, bool& found);
    // Renames the system and sets the system name of its layers where it is exactly the old one. False when the group
    // has no system of the old name. That the new name is free is the caller's care: a system of the new name stays in
    // the list, but is no longer found by name.
    bool RenamePipeSystem(const CString& oldName, const CString& newName);
    // As RenamePipeSystem, but the layers' system names are compared with the old one without regard to case.
    bool RenameSystemName(const CString& oldName, const CString& newName);

    // The system of that name, or at that position from 0, or the first one with an own layer of that name; null when
    // there is none.
    PipeNode* FindPipeSystem(const CString& name) const;
    PipeNode* FindPipeSystem(int index) const;
    PipeNode* FindPipeSystemByLayerName(const CString& layerName) const;
    int GetSystemNum() const;
    bool IsEmpty() const;
    // Position from 0; -1 when there is no such system.
    int GetSystemIndex(const CString& name) const;
    // False, info untouched, for a position outside.
    bool GetSystemInfo(int index, PipeBasicNode& info) const;
    // Appends the names in the group's order; a name the list holds already (exactly) is not added again.
    void GetAllPipeSystemNames(std::vector<CString>& names) const;
    bool IsIncludedSystem(const CString& name) const;
    // Replaces info by the group's summary; includeAliases as in PipeNode::GetPipeInfo.
    void GetPipeGroupInfo(PipeClassificationNode& info, bool includeAliases) const;

    // False when a system with another name (compared without regard to case) has an own layer of that name.
    bool CanRenameLayerName(const CString& systemName, const CString& layerName) const;
    // Sum of PipeNode::CountLayer.
    int CountLayer(const CString& layerName) const;

    // The current name of the first system whose PipeOriginalName is exactly oldName. False, current untouched, when
    // there is none.
    bool OldSystemNameToCurrentName(const CString& oldName, CString& current) const;
    // Tells the pipe library the current name of every system that has an older one.
    void ConvertOldSysNameToCurrentName() const;

    // The layer that answers for the type in the first system of that name (compared without regard to case) that has
    // one; null when there is none.
    LayerNode* FindLayerNode(const CString& systemName, const CString& layerType) const;
    // The first own layer of that name; null when there is none.
    LayerNode* FindLayerNode(const CString& layerName) const;
    // The layer of that name that answers for the type in one of the systems; null when there is none.
    LayerNode* FindLayerNodeByLayerType(const CString& layerType, const CString& layerName) const;
    // Looks for the first system in which a layer of that name answers for layerType; out becomes the name of that
    // system's layer for targetType (empty when it has none). False, out untouched, when there is no such system.
    bool GetLayerNameByLayerTypeLayerName(const CString& layerType, const CString& layerName, const CString& targetType,
                                          CString& out) const;

    // As the functions of PipeNode, over all systems in order.
    void GetAllLayer(LayerNameMap& layers) const;
    void GetAllLayerName(std::vector<CString>& names) const;
    void GetLayerTypes(std::set<CString>& types) const;
    void GetLayerAttachInfo(const CString& attachment, LayerAttachNode& info) const;
    // LayerNode::CreateLayer of the first own layer of that name in the first system that has one. The null id when
    // there is none.
    AcDbObjectId CreateLayer(const CString& layerName) const;
    // Brings every system's aliases up to date and adds the group's layers to a lookup map by name.
    void InitLayers(LayerNameMap& layers);

    // PipeNode::UpdateLayer in the systems named exactly as the source's SystemName, or in all of them when that is
    // empty. False when no layer was updated.
    bool UpdateLayer(const LayerNode& source);
    // PipeNode::UpdateLayerTo for every system that the target has under the same name; other systems stay.
    void UpdateLayerTo(PipeGroupNode* target) const;

    // Becomes a deep copy of the source; a null pointer changes nothing.
    void CopyFrom(const PipeGroupNode* source);

  private:
    friend class PipeNode;
    friend class qrs::standard::SystemIndex;

    void TakeSystem(std::unique_ptr<PipeNode> system);
    void SetName(const CString& name, PipeNode& system);
    bool Rename(const CString& oldName, const CString& newName, bool ignoreCaseInLayers);

    CString name_;
    bool canName_;
    std::vector<std::unique_ptr<PipeNode>> systems_;
    std::map<CString, PipeNode*> byName_;
    std::shared_ptr<qrs::standard::SystemIndex> index_;  // shared by the groups of a standard
    int place_ = 0;                                      // among the groups of the index
};

// One group of layers that belong to no pipe system. The LayerType of such a layer is its key inside the group.
class QRS_PIPE_PORT OtherLayerNode : private NodeNameOwner {
  public:
    explicit OtherLayerNode(const CString& groupName = CString());
    ~OtherLayerNode() override;
    OtherLayerNode(const OtherLayerNode&) = delete;
    OtherLayerNode& operator=(const OtherLayerNode&) = delete;

    const CString& GroupName() const { return name_; }
    // Whether name is exactly the group's name.
    bool IsLayerType(const CString& name) const;

    // Takes ownership of the layer. Of two layers of one key the later one answers. A null pointer changes nothing.
    void AddLayerNode(LayerNode* layer);
    // The layer of that key, else the one of the key that the type map gives for it; null when there is none.
    LayerNode* FindLayerNode(const CString& layerKey) const;
    // The layer at a position, from 0; null outside.
    LayerNode* FindLayerNode(int index) const;
    // The first layer of that name; null when there is none.
    LayerNode* FindLayerNodeByLayerName(const CString& layerName) const;
    int GetLayerNum() const;

    // Add what the group holds, as the functions of PipeNode.
    void GetAllLayer(LayerNameMap& layers) const;
    void GetAllLayerName(std::vector<CString>& names) const;
    void GetLayerAttachInfo(const CString& attachment, LayerAttachNode& info) const;

    // Sets one entry of the type map; a default one is not stored in the file.
    void AddMapping(const CString& layerKey, const CString& mappedKey, bool isDefault);
    const std::map<CString, CString>& TypeMap() const { return typeMap_; }
    // Whether the key is in the type map and in the default map, and both give the same for it.
    bool IsDefaultMapping(const CString& layerKey) const;

    // Gives the first layer named oldName the new name. False when groupName is not exactly the group's name, or when
    // the group has no such layer.
    bool RenameLayerName(const CString& groupName, const CString& oldName, const CString& newName);

    // Becomes a deep copy of the source; a null pointer changes nothing.
    void CopyFrom(const OtherLayerNode* source);

  private:
    void NameChanges() override;
    void TakeLayer(std::unique_ptr<LayerNode> layer);
    const qrs::standard::LayerLookUp& LookUp() const;

    CString name_;
    std::vector<std::unique_ptr<LayerNode>> layers_;
    std::map<CString, CString> typeMap_;
    std::map<CString, CString> defaultMap_;
    mutable std::unique_ptr<qrs::standard::LayerLookUp> lookUp_;  // made when first asked after a change
};
