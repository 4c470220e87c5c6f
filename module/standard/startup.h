// What the start of the module does with the standard, step by step; the frame calls the steps in its own order.
//
// Every step may run whatever the steps before it found. Messages go to the command line, one for each failure.
#pragma once

namespace qrs::standard {

// Chooses the standard file and loads it. The user's choice (QrsExport::ChosenStandardFile) comes first: one that names
// no file falls back silently to pwx.qdsl of the system folder; one that does not load, or that cannot be looked at,
// falls back to it with a message. Where that file is missing the built-in default serves; where it does not load, or
// cannot be looked at, there is no standard, with a message. Only the load of the chosen (or, without a choice, the
// default) file writes its path back. Nothing happens when a standard is loaded already.
// False when no standard is loaded.
bool loadCurrentStandard();

// Loads the standard again, chosen as at the start, and does with it what the start does. Where the file does not load,
// the one in memory stays, with a message. Pointers into the old tree end when a new one is loaded.
// False when no new one was loaded.
bool reloadCurrentStandard();

// Reads LAYERDEF.DAT of the system folder, when there is one: settings of layers by their key in older standards.
//
// It is text in the ANSI code page. A line reads OldKey=LayerName[,colour[,linetype]] with the colour as an index (0 by
// block, 256 by layer); empty parts change nothing; lines that begin with ';' and empty lines are skipped. Other lines
// get one message with their line numbers and are skipped.
void readOldLayerDefinitions();

// Tells the pipe library the current names of the systems that have older ones, in place of all it was told before. A
// name that some system has now is current, also where another system once had it.
void convertOldSystemNames();

// Gives the kinds of objects their own colours, then those of the standard.
void applyObjectColors();

// Reads LineTypeChnShx, LineTypeEngShx, LineTypeHeight and LineTypeScale of the PWXConfig key; a missing value leaves
// the setting as it is. Needs no standard.
void readLinetypeTextSettings();

// Makes the materials of pipe.dbf the suite's list of pipe materials, until they are withdrawn. The table is not read
// before somebody asks for them. Needs no standard.
void offerPipeMaterials();
void withdrawPipeMaterials();

// Puts every name of the standard into the look-up, so that the first question is as quick as the later ones.
void initLayerMaps();

// Deletes the standard and everything held with it, the lists of fonts too; systems have no old names then.
void releaseStandard();

}  // namespace qrs::standard
