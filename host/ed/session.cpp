#include "embedded/session.h"

#include "db/database_core.h"
#include "db/file_failure.h"
#include "dbapserv.h"
#include "ed/editor_events.h"
#include "embedded/applications.h"
#include "embedded/host_start.h"
#include "platform/text.h"
#include "rxevent.h"

#include <algorithm>

namespace embedded {

namespace {

std::vector<AcDbDatabase*>& openDocuments() {
    static std::vector<AcDbDatabase*> documents;
    return documents;
}

std::string& fileError() {
    static std::string line;
    return line;
}

// Takes a database that somebody ends directly off the list.
class DocumentReactor : public AcRxEventReactor {
public:
    void databaseToBeDestroyed(AcDbDatabase* database) override {
        auto& list = openDocuments();
        list.erase(std::remove(list.begin(), list.end(), database), list.end());
    }
};

void becomeDocument(AcDbDatabase* database) {
    static DocumentReactor* reactor = nullptr;
    if (reactor == nullptr) {
        reactor = new DocumentReactor; // for the life of the process, as the events are
        acrxEvent->addReactor(reactor);
    }
    openDocuments().push_back(database);
    activateDocument(*database);
    sendToAll(AcRx::kLoadDwgMsg, database);
}

std::string failureLine(const std::wstring& fileName, const char* what) {
    return !fileError().empty() ? fileError() : platform::toUtf8(fileName) + ": " + what;
}

} // namespace

void noteFileFailure(std::string line) { fileError() = std::move(line); }
const std::string& lastFileError() { return fileError(); }

AcDbDatabase* openDocument(const std::wstring& fileName, std::string& error) {
    startHost();
    error.clear();
    noteFileFailure({});
    auto* database = new AcDbDatabase(false);
    if (database->readDwgFile(fileName.c_str()) != Acad::eOk) {
        error = failureLine(fileName, "the drawing cannot be read");
        delete database;
        return nullptr;
    }
    becomeDocument(database);
    return database;
}

AcDbDatabase* newDocument() {
    startHost();
    auto* database = new AcDbDatabase(true);
    becomeDocument(database);
    return database;
}

bool saveDocument(AcDbDatabase& database, const std::wstring& fileName, std::string& error) {
    error.clear();
    noteFileFailure({});
    sendToAll(AcRx::kSaveMsg, &database);
    if (database.saveAs(fileName.c_str()) == Acad::eOk)
        return true;
    error = failureLine(fileName, "the drawing cannot be saved");
    return false;
}

void closeDocument(AcDbDatabase* database) {
    auto& list = openDocuments();
    auto it = std::find(list.begin(), list.end(), database);
    if (it == list.end())
        return;
    AcDbDatabase* before = acdbHostApplicationServices()->workingDatabase();
    activateDocument(*database);
    sendToAll(AcRx::kUnloadDwgMsg, database);
    delete database;
    if (before == database)
        before = list.empty() ? nullptr : list.back();
    acdbHostApplicationServices()->setWorkingDatabase(before);
}

void endSession() {
    sendToAll(AcRx::kPreQuitMsg, nullptr);
    closeAllDocuments();
    sendToAll(AcRx::kQuitMsg, nullptr);
    rx::unloadAll();
}

void closeAllDocuments() {
    while (!openDocuments().empty())
        closeDocument(openDocuments().back());
}

const std::vector<AcDbDatabase*>& documents() { return openDocuments(); }

void activateDocument(AcDbDatabase& database) {
    acdbHostApplicationServices()->setWorkingDatabase(&database);
}

void beginCommand(AcDbDatabase& database) { database.startUndoRecord(); }

bool runCommand(AcDbDatabase& database, const std::wstring& name, const std::function<bool()>& work) {
    EditorCommand command(name.c_str());
    beginCommand(database);
    const bool done = work();
    if (done)
        command.succeeded();
    return done;
}

bool undo(AcDbDatabase& database) {
    EditorCommand command(L"U");
    const bool done = database.core().undo().undo();
    if (done)
        command.succeeded();
    return done;
}

bool redo(AcDbDatabase& database) {
    EditorCommand command(L"REDO");
    const bool done = database.core().undo().redo();
    if (done)
        command.succeeded();
    return done;
}

bool undoRedoActive(const AcDbDatabase& database) { return database.core().undo().active(); }

void forgetHistory(AcDbDatabase& database) {
    if (database.core().undo().active())
        return;
    database.core().dropErased();
    database.core().undo().forget();
}

} // namespace embedded
