// PwxTool: helpers for drawing objects that the module offers to its siblings.
//
//     AcDbObjectIdArray layers;
//     PwxTool::GetAllLayerIds(acdbHostApplicationServices()->workingDatabase(), layers);
//     AcDbObjectId dashed = PwxTool::LoadQdLineType(L"DASHED");   // null when nobody knows it
#pragma once

#include <map>
#include <vector>

#include "afx.h"
#include "dbid.h"
#include "pipeport.h"

class AcDbDatabase;
class AcDbEntity;
class CStringArray;
struct SSearchPipeList;
struct TEntitySet;

// What a list of linetypes shows of one.
struct QRS_PIPE_PORT LinetypeNode {
    CString Name;
    CString Comment;
};

namespace PwxTool {

// Every layer of the drawing, in the order of its layer table. out is replaced; a null database, or one whose layer
// table cannot be opened, leaves it empty.
QRS_PIPE_PORT void GetAllLayerIds(AcDbDatabase* database, AcDbObjectIdArray& out);

// --- External references

// Whether the object is a block reference that shows an external reference. False for what cannot be opened.
QRS_PIPE_PORT bool IsExternalBlock(AcDbObjectId object);
QRS_PIPE_PORT bool IsExternalBlock(const TEntitySet& object);

// Asks for an object inside the external reference that reference shows; a pick that meets nothing of it is asked
// again. RTNORM with the layer of that object as this drawing has it ("reference|layer"); RTNONE after Enter and RTCAN
// after Esc, layer null then.
QRS_PIPE_PORT int SelectEntityFromExternalBlock(const CString& prompt, const TEntitySet& reference,
                                                AcDbObjectId& layer);

// --- Linetypes
//
// linetype.dbf is looked for in the system folder, then along the support search path, and read anew by every call that
// needs it. Names are compared without regard to case; of several rows of one name the first one counts. Rows bearing
// the deletion mark count like others.

// The working database's linetype of that name. One that the drawing has already stays as it is; a missing one is made
// as linetype.dbf describes it, with the name as the table spells it.
//
// A text of the pattern stands centred in its gap and along the line. It is as high as the setting LineTypeHeight says
// (millimetres on paper: drawing units at linetype scale 1, which the plot scale multiplies) and written in the text
// style "文字线形", which is made when the drawing lacks it from the settings LineTypeEngShx and LineTypeChnShx (font
// files) and LineTypeScale (width divided by height). The settings lie in the key "PWXConfig" (see GetRegLocation) and
// are read when the module starts.
// Drawings of R12 have no texts in linetypes, nor have those whose text styles lack handles: there the gap stays empty.
//
// The null id when there is no working database, when neither the drawing nor the table knows the name, when the table
// is missing, or when its row is damaged (no pattern, or one that Num and Length do not describe); of the last two a
// message tells. The drawing is then as it was.
QRS_PIPE_PORT AcDbObjectId LoadQdLineType(const CString& name);

// Gives the working database's linetype of that name the pattern and the comment that linetype.dbf says, with texts as
// above; its name stays as the drawing spells it. False, the drawing as it was, when the drawing lacks it, when the
// table is missing, does not know the name or is damaged there, and when the drawing could hold the pattern's texts but
// its text styles lack handles.
QRS_PIPE_PORT bool UpdateLinetype(const CString& name);

// The linetypes of linetype.dbf in the table's order, whether or not the drawing has them, none twice. out is replaced.
// False, out empty, when the table is missing.
QRS_PIPE_PORT bool GetAllLinetype(std::vector<LinetypeNode>& out);

// The pattern of a linetype as linetype.dbf spells it, lengths in drawing units with four decimals at most: "12,-9[J]"
// is a dash of 12 and a gap of 9 with a text, "" a continuous line. By name: what the table says. By id: what the
// drawing says, a gap that is cut where its text stands put together again; a shape is "[#132]".
// False, pattern untouched, when the table does not know the name, is missing or damaged there; when the id is no
// linetype.
QRS_PIPE_PORT bool GetLinetypePattern(const CString& name, CString& pattern);
QRS_PIPE_PORT bool GetLinetypePattern(AcDbObjectId linetype, CString& pattern);

// --- Marks of entities
//
// Small texts in an entity's extended data, one per application name: after the name (1001) stands the text (1000). A
// TEntitySet has its header, qrs_select.h.
// The names the suite uses are "PWX-ENT-TYPE", "PIPE-SERIAL" and "BUILDING-SERIAL". Reports on pipes also read
// "PIPE-DN" and "PIPE-MATERIAL", where somebody has written them.

// The text under that name. Empty when the entity is null, has nothing under the name, or something else than a text
// stands first after it.
QRS_PIPE_PORT CString ReadXdata(const AcDbEntity* entity, const wchar_t* itemName);

// Puts the text under that name in place of what was there. The name is registered in the working database first, for a
// null entity too. 0 for a null entity, else 1: also when the drawing did not take the text (an entity that is not open
// for writing, a text of more than 255 characters).
QRS_PIPE_PORT int WriteXdata(AcDbEntity* entity, const wchar_t* itemName, const wchar_t* value);

// The mark that tells what an ordinary entity stands for ("PWX-ENT-TYPE"); empty when it has none and when it cannot be
// opened. unused has no effect: callers built long ago hand something over.
QRS_PIPE_PORT CString GetEntityType(const AcDbObjectId& id, const CString& unused);
QRS_PIPE_PORT CString GetEntityType(const AcDbEntity* entity, const CString& unused);
QRS_PIPE_PORT CString GetEntityType(TEntitySet entity, const CString& unused);

// 1 when the mark is exactly that type, else 0; so an entity without a mark is of the empty type. 0 when it cannot be
// opened. A null pointer has the empty mark.
QRS_PIPE_PORT int IsEntityType(const AcDbObjectId& id, const CString& type);
QRS_PIPE_PORT int IsEntityType(AcDbEntity* entity, const CString& type);
QRS_PIPE_PORT int IsEntityType(TEntitySet entity, const CString& type);

// Writes the mark, as WriteXdata does and with its result; 0 also when the entity cannot be opened for writing.
QRS_PIPE_PORT int SetEntityType(const AcDbObjectId& id, const CString& type);
QRS_PIPE_PORT int SetEntityType(AcDbEntity* entity, const CString& type);
QRS_PIPE_PORT int SetEntityType(TEntitySet entity, const CString& type);

// --- Settings of pipe canals
//
// Kept per user in the key "PipeCanalSetting" (see GetRegLocation) and read afresh on every call. The getters give the
// default when there is no value of the kind; a setter that cannot write does nothing.

QRS_PIPE_PORT double GetPipeCanalBreakDist();  // default 2.0
QRS_PIPE_PORT void SetPipeCanalBreakDist(double value);
QRS_PIPE_PORT int GetPipeCanalElevationPrecision();  // default 3
QRS_PIPE_PORT void SetPipeCanalElevationPrecision(int value);
QRS_PIPE_PORT int GetPipeCanalGradientDimType();  // default 0
QRS_PIPE_PORT void SetPipeCanalGradientDimType(int value);
QRS_PIPE_PORT int GetPipeCanalLenDimType();  // default 1
// Callers are linked against this spelling of the name.
QRS_PIPE_PORT void SetPipeCanalLendimType(int value);

// --- Serials
//
// Texts such as 1, 012, WL-3 or JL-1A. Digits are "0" to "9", letters "A" to "Z" and "a" to "z"; everything else is
// punctuation. Drawings that are numbered already depend on the rules below as they are, odd as some results look.
// Where a serial is taken as a number, blanks before it and a sign count, what follows the digits does not, and numbers
// beyond 32 bits count as the largest (smallest) one; the number after the largest is the largest.

// Cuts a serial into pieces of digits and of other characters; whether there is any. After the first change of kind a
// piece takes its kind from its second character, and the last piece lacks a character (of two the first, else the
// last; one that stands alone is no piece). pieces is replaced.
//
//     123 -> 123   1A -> 1   A1B -> A, B   WL-1 -> WL-   WL-12 -> WL-, 2   WL-123 -> WL-, 12
QRS_PIPE_PORT bool SplitSerial(const CString& serial, std::vector<CString>& pieces);

// The order of two serials, piece by piece: -1, 0 or 1. Where a has a piece of digits, the numbers that the whole
// serials begin with are compared. When one is empty, what CString::Compare says of the two.
QRS_PIPE_PORT int CompareSerial(const CString& a, const CString& b);

// The next serial. Digits at the end count up by one, whatever the step, and keep their width (WL-009 -> WL-010);
// otherwise letters and digits count up by the step, carrying to the left (A-Z -> B-A, A9Z -> A10A). An empty serial
// becomes the step.
QRS_PIPE_PORT void IncreaseSerial(CString& serial, int step);

// Whether the text is made of digits alone and not empty; with rejectLeadingZero also not begun by "0".
QRS_PIPE_PORT bool IsDigit(const CString& text, bool rejectLeadingZero);

// The parts of a text between any of the delimiters; runs of them count as one, and no part is empty. A text without
// any part gives itself as the only one. out is replaced.
QRS_PIPE_PORT void SplitText(const CString& text, const CString& delimiters, CStringArray& out);

// Whether the whole text fits the pattern of "?" (one byte), "*" (any) and literals, in bytes of the ANSI code page; a
// character without a place there counts as "?", for one outside the basic plane two of them. A full-width question
// mark in the pattern is a "?". Without caseSensitive the bytes of "A" to "Z" equal those of "a" to "z", also where
// they are the second half of a character. What stands between two "*" is met at its leftmost place, and no other is
// tried. The time grows with the length of the text times, at worst, that of the pattern's longest part.
QRS_PIPE_PORT bool MatchingString(const CString& text, const CString& pattern, bool caseSensitive);

// The same with patterns separated by commas. matchAll other than 0: whether all fit, empty ones too (which only an
// empty text fits). 0: whether one that is not empty fits. negate turns the answer round.
QRS_PIPE_PORT bool MultiMatching(const CString& text, const CString& patterns, int matchAll, bool negate,
                                 bool caseSensitive);

// --- Numbering a drawing

// The next free serials of the vertical pipes in the current drawing's model space, by pipe system; pipes with a
// building serial count for the key "system%%building" instead. Numbers without leading zeros go into the numeric
// table, all others into the text table. The first pipe of a key overwrites what a table held; other entries stay. A
// key with a building that the text table lacks gets the two defaults in both tables first.
//
// A pipe is vertical when it is a straight line whose ends lie less than 0.1 drawing units apart in X and in Y. In the
// text table the last pipe of a key wins that does not come before the entry.
QRS_PIPE_PORT void InitVPipeSerials(std::map<CString, int>& numeric, std::map<CString, CString>& text,
                                    const CString& defaultText, int defaultNumber);

// Numbers the nodes of a traced run from first on and draws the numbers. Ends at a node that has a serial already or
// whose number cannot be drawn. The next number to use; first may be null.
QRS_PIPE_PORT int DoSerialNumber2(SSearchPipeList* first, int number);

// Draws a number up and to the right of a pipe node, on the layer "计算文字" of the standard and in its text style for
// other labels; both are made when the drawing lacks them. False when the id is no pipe node.
QRS_PIPE_PORT bool DoDimSerialNumber(AcDbObjectId node, int number);

// The serials of the title blocks of a folder (inner form) that have that category, or, for the empty one, any
// category; each is appended once, in the order of the folder's cache (see titleblock-cache.md among the package's
// pages). Without a readable cache out stays as it is. blockName: only of title blocks of that name, without regard to
// case; empty: of all.
QRS_PIPE_PORT void SearchTkBlkSerial(const CString& blockDirectory, const CString& category, std::vector<CString>& out);
QRS_PIPE_PORT void SearchTkBlkSerial(const CString& blockDirectory, const CString& category, std::vector<CString>& out,
                                     const CString& blockName);

}  // namespace PwxTool

// Whether the text is a plain decimal number: digits, one "." at most, a "-" only as the first character, and any "e",
// wherever they stand ("1e5e" counts). One that begins with "." or "-" and is zero does not count ("-0", ".0"); an
// empty text does.
QRS_PIPE_PORT bool IsStrAllNum(CString text);
