#pragma once

#include "structure/export.h"

#include "aced.h"
#include "dbid.h"
#include "dbmain.h"

#include <set>

namespace structure {

// Does what is due once elements have come, moved or been copied: fresh ones get their number, those that
// moved are told so (the nodes of a beam follow its ends), copies become elements of their own.
//
// None of that can be done while it happens: the elements are still open, those around them may move too, and
// ids of copies still lead to the originals. So it is noted in the drawing's list (orv::MovedElements) and
// done when the cloning or the command has ended.
STRUCTURE_API void processMovedElements(AcDbDatabase& database);

// Notes what happens to the elements of all drawings, and does what is due when its time has come. A program
// that works without commands calls processMovedElements itself.
class STRUCTURE_API MovedElementsReactor : public AcEditorReactor {
public:
    // Watches the drawings that are there, and those that come.
    void start();
    void stop();

    void databaseConstructed(AcDbDatabase* database) override;
    void databaseToBeDestroyed(AcDbDatabase* database) override;

    void beginDeepClone(AcDbDatabase* to, AcDbIdMapping& mapping) override;
    void endDeepClone(AcDbIdMapping& mapping) override;
    void abortDeepClone(AcDbIdMapping& mapping) override;
    // A new drawing was made of parts of another one, which may have been moved to another origin since.
    void endWblock(AcDbDatabase* to) override;

    // After an undo and a redo nothing is due: the host has put all of the old states back.
    void commandEnded(const ACHAR* command) override;

private:
    // Notes elements of the drawings that it was added to.
    class DrawingReactor : public AcDbDatabaseReactor {
    public:
        void objectAppended(const AcDbDatabase* database, const AcDbObject* object) override;
        void objectModified(const AcDbDatabase* database, const AcDbObject* object) override;
        void goodbye(const AcDbDatabase* database) override;

        void watch(AcDbDatabase* database);
        void leave(AcDbDatabase* database);
        void leaveAll();

        int clonings = 0; // that run now

    private:
        std::set<AcDbDatabase*> m_watched;
    };

    DrawingReactor m_drawings;
};

} // namespace structure
