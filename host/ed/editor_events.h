#pragma once

#include "AdAChar.h"

namespace embedded {

// A command of the editor's, for as long as this lives: its start is told at once, and at the end whether it
// ended or failed.
class EditorCommand {
public:
    explicit EditorCommand(const ACHAR* name);
    ~EditorCommand();
    EditorCommand(const EditorCommand&) = delete;
    EditorCommand& operator=(const EditorCommand&) = delete;

    void succeeded() { m_succeeded = true; }

private:
    const ACHAR* m_name;
    bool m_succeeded = false;
};

} // namespace embedded
