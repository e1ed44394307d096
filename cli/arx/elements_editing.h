#pragma once

#include "cli/arx/elements.h"
#include "cli/common/numbers.h"

#include <optional>
#include <string>
#include <vector>

namespace taldork::cli {

/// One line of what `elements edit` reads.
struct EditStep {
    enum Kind { kMove, kCopy, kErase, kUndo, kRedo };

    Kind kind = kMove;
    std::vector<std::string> handles; ///< none for undo and redo
    Point offset = {};                ///< for moves and copies

    /// As it is written: "move 2A 0,0,3".
    std::string text() const;
};

/// Nothing for a line that is none; blanks between the words do not count.
std::optional<EditStep> parseEditStep(const std::string& line);

/// Works on the elements of a drawing step by step, as a person would in an editor: each is a command, which
/// front ends hear of, and can be undone.
class ElementEditing {
public:
    explicit ElementEditing(const Drawing& drawing) : m_drawing(drawing) {}

    /// What a step did to the elements that there are, in words: one line for each that came or went.
    struct Change {
        std::string undone; ///< the step that an undo or a redo was about; empty for others
        std::vector<std::string> came, went;
    };
    /// Throws Failure if it cannot be done; what it did until then stays.
    Change run(const EditStep& step);

    /// Whether steps have been done that were not undone.
    bool isChanged() const { return !m_done.empty(); }

private:
    void runCommand(const EditStep& step);
    void move(AcDbObjectId id, const Point& offset) const;
    void copy(const std::vector<AcDbObjectId>& ids, const Point& offset) const;
    void erase(AcDbObjectId id) const;
    std::string undo();
    std::string redo();

    const Drawing& m_drawing;
    std::vector<std::string> m_done, m_undone; // the latest last
};

} // namespace taldork::cli
