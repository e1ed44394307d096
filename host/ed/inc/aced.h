#pragma once

#include "rxevent.h"

// The place where editor reactors are added; that of the other events.
#define acedEditor acrxEventSource()

// Hears of the editor's commands, beside all that happens to drawings. Undo and redo are the commands "U" and
// "REDO": between their start and their end the host puts old states back.
class AcEditorReactor : public AcRxEventReactor {
public:
    ACRX_DECLARE_MEMBERS(AcEditorReactor);

    // Each start is followed by one of the others, with the same name.
    virtual void commandWillStart(const ACHAR* /*command*/) {}
    virtual void commandEnded(const ACHAR* /*command*/) {}
    virtual void commandCancelled(const ACHAR* /*command*/) {}
    virtual void commandFailed(const ACHAR* /*command*/) {}
};
