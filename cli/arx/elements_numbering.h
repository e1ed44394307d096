#pragma once

#include "cli/arx/elements.h"

#include <string>
#include <vector>

namespace taldork::cli {

/// An element with its number; 0 for one that never got any.
struct NumberedElement {
    AcDbObjectId id;
    unsigned int number = 0;
};

/// The numbers of one class in model space, where numbers are given.
struct ClassNumbers {
    std::string className; ///< UTF-8
    std::string dxfName;
    std::vector<NumberedElement> elements; ///< by handle

    /// Numbers that several elements have, with those.
    struct Duplicate {
        unsigned int number;
        std::vector<AcDbObjectId> ids;
    };
    std::vector<Duplicate> duplicates() const;

    /// Numbers from 1 to the highest that no element has, in runs.
    struct Gap {
        unsigned int first, last;
    };
    std::vector<Gap> gaps() const;

    std::vector<AcDbObjectId> unnumbered() const;
    unsigned int highest() const;
};

struct NumberChange {
    AcDbObjectId id;
    unsigned int from = 0;
    unsigned int to = 0;
};

/// What the elements of a drawing tell of their numbers.
struct DrawingNumbers {
    std::vector<ClassNumbers> classes; ///< by name
    /// Elements without the code of their class, whose numbers nobody knows.
    std::size_t unknown = 0;
};

/// `onlyClass` (name or DXF name) unless it is empty. Throws Failure.
DrawingNumbers readNumbers(const Drawing& drawing, const std::string& onlyClass);

/// What is to be changed so that the elements of a class are numbered from 1 on without a gap, in the order
/// of their numbers, then of their handles; those without a number come last. In an order in which no number
/// is taken when it is given.
std::vector<NumberChange> planRenumbering(const ClassNumbers& numbers);

/// Gives the numbers. Throws Failure if an element does not take its number.
void renumber(const Drawing& drawing, const std::vector<NumberChange>& changes);

} // namespace taldork::cli
