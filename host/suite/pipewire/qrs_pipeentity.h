// Stand-in for the suite's closed pipe library: pipes, what belongs to them, and vertical sections, as entities of the
// drawing. How they lie in drawing files is told in pipe-entities.md.
//
//     auto* pipe = new TDbPipe;
//     pipe->SetCurve(TPipeCurve::Line({0, 0, 0}, {3000, 0, 0}));
//     pipe->SetPipeSystemName(L"生活给水");
//     AcDbBlockTableRecordPointer modelSpace(ACDB_MODEL_SPACE, database, AcDb::kForWrite);
//     if (modelSpace->appendAcDbEntity(pipe) == Acad::eOk) pipe->close();   // eNotApplicable in drawings before AC1015
//     else delete pipe;
//
// Setters need the entity open for writing (eNotOpenForWrite), as a new one is. An entity that a drawing file holds
// damaged answers with what a new one has; ids of objects that are gone are not handed out. Lengths are in drawing
// units.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dbmain.h"
#include "gepnt3d.h"
#include "host/platform/port.h"

// The path of a pipe: a straight line segment, or an arc parallel to the XY plane.
struct QRS_HOST_PORT TPipeCurve {
    enum Kind { kLine = 0, kArc = 1 };

    static TPipeCurve Line(const AcGePoint3d& start, const AcGePoint3d& end);
    // bulge: the tangent of a quarter of the arc's angle, positive where it runs counterclockwise from start to end; 1
    // is a half circle.
    static TPipeCurve Arc(const AcGePoint3d& start, const AcGePoint3d& end, double bulge);

    bool IsLine() const { return kind == kLine; }
    // A straight line whose ends lie less than 0.1 drawing units apart in X and in Y: the path of a vertical pipe.
    bool IsVertical() const;
    // Along the curve; of a kind that is not known, the distance of its ends.
    double Length() const;
    // Of a point from the nearest point of the curve; of a kind that is not known, from the nearer end.
    double DistanceTo(const AcGePoint3d& point) const;
    bool operator==(const TPipeCurve& other) const;
    bool operator!=(const TPipeCurve& other) const { return !(*this == other); }

    int kind = kLine;  // a drawing may have other numbers: curves that are no line, known by their ends alone
    AcGePoint3d start;
    AcGePoint3d end;
    double bulge = 0.0;  // of an arc
};

// What pipes of every form share.
class QRS_HOST_PORT TDbPipePrototype : public AcDbEntity {
  public:
    ACRX_DECLARE_MEMBERS(TDbPipePrototype)

    // The name the pipe itself bears, as it is called now (CurrentPipeSystemName); empty when it reports none, as pipes
    // of built-in systems may.
    std::wstring GetPipeSystemName() const;
    // The name it was drawn under, which may be an old one.
    std::wstring GetDrawnSystemName() const;
    Acad::ErrorStatus SetPipeSystemName(const std::wstring& name);
    // The type code of its system (GetSysType); kCustomSysType for a new pipe.
    int GetPipeSysType() const;
    Acad::ErrorStatus SetPipeSysType(int sysType);

    // The diameter text, arrows, valves and the like that follow the pipe, each once. out is replaced.
    void GetAttachments(AcDbObjectIdArray& out) const;
    // eWrongObjectType unless the id is a TDbPipeAttachment of an open drawing; eDuplicateKey when the pipe has it.
    Acad::ErrorStatus AddAttachment(AcDbObjectId attachment);
    // eKeyNotFound when the pipe does not have it.
    Acad::ErrorStatus RemoveAttachment(AcDbObjectId attachment);

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

    // As drawing files hold them.
    struct Values {
        std::wstring systemName;
        int sysType = 0;
        std::vector<AcDbObjectId> attachments;
        std::optional<std::uint32_t> named;  // the tags that the file has (entities/fieldrow.h)
    };

  protected:
    TDbPipePrototype() = default;

  private:
    Values values_;
};

// A pipe drawn as one line, a vertical one with a circle of 2 mm on paper around it.
class QRS_HOST_PORT TDbPipe : public TDbPipePrototype {
  public:
    ACRX_DECLARE_MEMBERS(TDbPipe)
    TDbPipe() = default;

    // A new pipe is a line of no length at the origin.
    TPipeCurve GetCurve() const;
    // eInvalidInput for coordinates or a bulge that are no finite numbers, and a kind of more than 16 bits.
    Acad::ErrorStatus SetCurve(const TPipeCurve& curve);
    AcGePoint3d GetStartPoint() const { return GetCurve().start; }
    AcGePoint3d GetEndPoint() const { return GetCurve().end; }

    // The layers that its diameter text and its flow arrows are drawn on; null when none is set. Setters take a layer
    // of an open drawing, or null (eInvalidLayer otherwise).
    AcDbObjectId GetDimLayerId() const;
    Acad::ErrorStatus SetDimLayerId(AcDbObjectId layer);
    AcDbObjectId GetArrowLayerId() const;
    Acad::ErrorStatus SetArrowLayerId(AcDbObjectId layer);

    // The nodes at its ends; null where there is none. Setters take a TDbPipeNode of an open drawing, or null
    // (eWrongObjectType otherwise).
    AcDbObjectId GetStartNode() const;
    Acad::ErrorStatus SetStartNode(AcDbObjectId node);
    AcDbObjectId GetEndNode() const;
    Acad::ErrorStatus SetEndNode(AcDbObjectId node);

    // How wide it is drawn, millimetres on paper; 0 when it has no width of its own.
    double GetLineWidth() const;
    // eInvalidInput for a width that is negative or no finite number.
    Acad::ErrorStatus SetLineWidth(double width);

    // True when the drawing file holds it without one of its sections or without a start point: what the other getters
    // answer is then made up. Never true of a new pipe.
    bool IsDamaged() const;

    // eNotApplicable for an arc that would not stay parallel to the XY plane.
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& transformation) override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

    // As drawing files hold them.
    struct Values {
        TPipeCurve curve;
        double lineWidth = 0.0;
        AcDbObjectId dimLayer;
        AcDbObjectId arrowLayer;
        AcDbObjectId startNode;
        AcDbObjectId endNode;
        std::optional<std::uint32_t> named;  // the tags that the file has (entities/fieldrow.h)
    };

  protected:
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* mode) override;

  private:
    bool IsPlaced() const;

    Values values_;
    bool isDamaged_ = false;
};

// Where pipes meet or end: a well, a piece of equipment, a fitting.
class QRS_HOST_PORT TDbPipeNode : public AcDbEntity {
  public:
    ACRX_DECLARE_MEMBERS(TDbPipeNode)
    TDbPipeNode() = default;

    // A drawing may have other numbers.
    enum Kind { kJoint = 0, kWell = 1, kEquipment = 2 };
    // kJoint for a new node.
    int GetKind() const;
    // eInvalidInput for a kind of more than 16 bits.
    Acad::ErrorStatus SetKind(int kind);

    virtual AcGePoint3d GetPosition() const;
    // eInvalidInput for coordinates that are no finite numbers.
    Acad::ErrorStatus SetPosition(const AcGePoint3d& position);

    // The diameter of a well, the side of a piece of equipment; 0 when it has the size of its symbol on paper.
    double GetSize() const;
    // eInvalidInput for a size that is negative or no finite number.
    Acad::ErrorStatus SetSize(double size);

    Acad::ErrorStatus transformBy(const AcGeMatrix3d& transformation) override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

    // As drawing files hold them.
    struct Values {
        AcGePoint3d position;
        int kind = 0;
        double size = 0.0;
        std::optional<std::uint32_t> named;  // the tags that the file has (entities/fieldrow.h)
    };

  protected:
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* mode) override;

  private:
    bool IsPlaced() const;

    Values values_;
};

// Whether the id is a TDbPipeNode of the kind kWell. False when it cannot be opened.
QRS_HOST_PORT bool IsWell(AcDbObjectId id);

// What follows a pipe: a diameter text, an arrow, a valve. It shows a symbol on the pipe, or a text.
class QRS_HOST_PORT TDbPipeAttachment : public AcDbEntity {
  public:
    ACRX_DECLARE_MEMBERS(TDbPipeAttachment)
    TDbPipeAttachment() = default;

    // A drawing may have other numbers; those who drew an attachment before there were kinds left it kOther.
    enum Kind {
        kOther = 0,
        kDimText = 1,
        kArrow = 2,
        kGateValve = 3,
        kCheckValve = 4,
        kStopValve = 5,
        kWaterMeter = 6,
        kFloorDrain = 7,
        kCleanout = 8,
        kInspectionOpening = 9,
        kTrap = 10,
        kTap = 11,
        kVentCap = 12,
        kSprinklerHead = 13,
        kFireHydrant = 14,
        kSlope = 15,       // text over an arrow that points downhill
        kRiserLabel = 16,  // text with a line to its riser
        kRoofOutlet = 17,
    };
    // kOther for a new attachment.
    int GetKind() const;
    // eInvalidInput for a kind of more than 16 bits.
    Acad::ErrorStatus SetKind(int kind);

    AcGePoint3d GetPosition() const;
    // eInvalidInput for coordinates that are no finite numbers.
    Acad::ErrorStatus SetPosition(const AcGePoint3d& position);

    // What it says, in one line; kinds without a text do not show it.
    std::wstring GetText() const;
    Acad::ErrorStatus SetText(const std::wstring& text);
    // The height of a text, the length of a symbol; 0 when it is 3 mm on paper.
    double GetSize() const;
    // eInvalidInput for a size that is negative or no finite number.
    Acad::ErrorStatus SetSize(double size);
    // Degrees from the X axis, counterclockwise.
    double GetRotation() const;
    // eInvalidInput for what is no finite number.
    Acad::ErrorStatus SetRotation(double degrees);

    // A text that would be mirrored is turned so that it can be read, in the place of its mirror image.
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& transformation) override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

    // As drawing files hold them.
    struct Values {
        AcGePoint3d position;
        int kind = 0;
        std::wstring text;
        double size = 0.0;
        double rotation = 0.0;
        std::optional<std::uint32_t> named;  // the tags that the file has (entities/fieldrow.h)
    };

  protected:
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* mode) override;

  private:
    bool IsPlaced() const;

    Values values_;
};

// A list of named fields, each of which holds a flag. Names are compared exactly, and keep the order they came in.
class QRS_HOST_PORT TEntityFields {
  public:
    struct Field {
        std::wstring name;
        bool flag = false;
    };

    // The field of that name; null when there is none. Good until a field is added.
    const Field* Find(std::wstring_view name) const;
    // Adds the field when there is none of that name.
    void Set(std::wstring_view name, bool flag);
    const std::vector<Field>& All() const { return fields_; }

  private:
    std::vector<Field> fields_;
    std::map<std::wstring, std::size_t, std::less<>> places_;  // by name
};

// What drawings of vertical sections share: which pipe systems' pipes are shown where they cross the section. Flags are
// kept by the system's name and by its type code; neither follows the other.
class QRS_HOST_PORT TDbSectionDrawing : public AcDbEntity {
  public:
    ACRX_DECLARE_MEMBERS(TDbSectionDrawing)

    // The flags by system name.
    const TEntityFields& GetFields() const;
    // False when no flag was set under the name, or the type code.
    bool GetCrossPipeFlag(const std::wstring& systemName) const;
    bool GetCrossPipeFlag(int sysType) const;
    Acad::ErrorStatus SetCrossPipeFlag(const std::wstring& systemName, bool show);
    Acad::ErrorStatus SetCrossPipeFlag(int sysType, bool show);

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

    // As drawing files hold them.
    struct Values {
        TEntityFields fields;
        std::map<int, bool> flagsByType;
        // While reading: the name and the type whose flags may come next.
        std::wstring lastName;
        int lastType = 0;
        std::optional<std::uint32_t> named;  // the tags that the file has (entities/fieldrow.h)
    };

  protected:
    TDbSectionDrawing() = default;

  private:
    Values values_;
};

// The vertical section of a drain.
class QRS_HOST_PORT TDbVerticalSection : public TDbSectionDrawing {
  public:
    ACRX_DECLARE_MEMBERS(TDbVerticalSection)
    TDbVerticalSection() = default;
};

// The vertical section of a supply pipe.
class QRS_HOST_PORT TDbVerticalSectionFeed : public TDbSectionDrawing {
  public:
    ACRX_DECLARE_MEMBERS(TDbVerticalSectionFeed)
    TDbVerticalSectionFeed() = default;
};
