#pragma once

#include <functional>
#include <string>
#include <vector>

class AcDbDatabase;

// What an editor does around drawings: documents come, are worked in, are saved and go. For programs and
// tests.
namespace embedded {

// Reads a drawing as a document: makes it the working database and tells every application (kLoadDwgMsg).
// Null if it cannot be read; `error` then is one line that names the file, the place and the reason.
AcDbDatabase* openDocument(const std::wstring& fileName, std::string& error);
// An empty drawing, as a document.
AcDbDatabase* newDocument();
// Tells every application (kSaveMsg), then saves a document, or any database; it bears that name afterwards.
// False with one line; the file is then as it was.
bool saveDocument(AcDbDatabase& database, const std::wstring& fileName, std::string& error);
// Tells every application (kUnloadDwgMsg), with the document as the working database, and ends it. If it was
// the one that was worked in, the newest of the others takes its place, or none. A database that is no
// document is left alone.
void closeDocument(AcDbDatabase* database);
void closeAllDocuments();
// The program's end: kPreQuitMsg to all, every document closed, kQuitMsg, every application unloaded.
void endSession();
// In the order of opening.
const std::vector<AcDbDatabase*>& documents();
// Makes a document the one that is worked in.
void activateDocument(AcDbDatabase& database);

// The editor's history: a command begins a step; undo and redo move whole steps, as the commands "U" and
// "REDO" of aced.h. False if there is none, and from within an undo or redo of the same database.
// beginCommand is the step alone, of which nobody is told: see runCommand.
void beginCommand(AcDbDatabase& database);
bool undo(AcDbDatabase& database);
bool redo(AcDbDatabase& database);
bool undoRedoActive(const AcDbDatabase& database);
// Does some work as a command of that name: begins a step, and tells the editor's reactors of start and end
// (aced.h). What these change at the end belongs to the command's step. `work` answers whether it was done;
// otherwise, and if it throws, the command has failed, and what it changed until then stays. True if it was
// done.
bool runCommand(AcDbDatabase& database, const std::wstring& name, const std::function<bool()>& work);
// Forgets the history: what is erased is gone for good. Nothing happens while an undo or redo runs.
void forgetHistory(AcDbDatabase& database);

// Why the last readDwgFile, save or saveAs failed, as one line; empty if it did not.
const std::string& lastFileError();

} // namespace embedded
