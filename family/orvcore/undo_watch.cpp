#include "orvcore/undo_watch.h"

#include "aced.h"

#include <algorithm>
#include <iterator>
#include <string>

namespace orvcore {

namespace {

// The editor's commands that put old states back.
const wchar_t* const s_undoCommands[] = {L"U", L"UNDO", L"REDO", L"MREDO"};

class UndoWatch : public AcEditorReactor {
public:
    UndoWatch() { acedEditor->addReactor(this); }
    ~UndoWatch() override { acedEditor->removeReactor(this); }

    bool runs() const { return m_depth > 0; }

    void commandWillStart(const ACHAR* command) override { m_depth += isUndo(command) ? 1 : 0; }
    void commandEnded(const ACHAR* command) override { end(command); }
    void commandCancelled(const ACHAR* command) override { end(command); }
    void commandFailed(const ACHAR* command) override { end(command); }

private:
    static bool isUndo(const ACHAR* command) {
        return std::any_of(std::begin(s_undoCommands), std::end(s_undoCommands),
                           [&](const wchar_t* name) { return std::wstring(name) == command; });
    }

    void end(const ACHAR* command) {
        if (m_depth > 0 && isUndo(command))
            --m_depth;
    }

    // An application may run a command from within another one's.
    int m_depth = 0;
};

UndoWatch s_watch;

} // namespace

bool undoOrRedoRuns() { return s_watch.runs(); }

} // namespace orvcore
