#include "ed/editor_events.h"

#include "aced.h"
#include "embedded/event_source.h"
#include "embedded/host_start.h"
#include "rxclass.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcEditorReactor, AcRxEventReactor)

namespace embedded {

namespace {

const RoomInitialiser roomInitialiser(50, [] { AcEditorReactor::rxInit(); });

template <class Call>
void tellEditorReactors(Call call) {
    events::tellAll([&](AcRxEventReactor& reactor) {
        if (auto* editorReactor = dynamic_cast<AcEditorReactor*>(&reactor))
            call(*editorReactor);
    });
}

} // namespace

EditorCommand::EditorCommand(const ACHAR* name) : m_name(name) {
    tellEditorReactors([&](AcEditorReactor& reactor) { reactor.commandWillStart(name); });
}

EditorCommand::~EditorCommand() {
    tellEditorReactors([&](AcEditorReactor& reactor) {
        m_succeeded ? reactor.commandEnded(m_name) : reactor.commandFailed(m_name);
    });
}

} // namespace embedded
