#pragma once

#include "cli/common/drawing.h"

#include "dbmain.h"
#include "dbx/elem/element_base.h"

#include <functional>
#include <string>
#include <vector>

namespace orv::elem {
class Plugin_ConnectedElements;
class Plugin_General;
} // namespace orv::elem

namespace taldork::cli {

using Element = orv::elem::ElementBase;

/// One element of a drawing. The pointers are valid as long as it is open.
struct FoundElement {
    AcDbObjectId id;
    /// Open for read; null if it could not be opened.
    AcDbEntity* entity = nullptr;
    /// Null if its class is not there, if the class could not read it, and if it could not be opened.
    Element* element = nullptr;
    /// Why there is no element; empty if there is one.
    std::string remark;

    /// The run-time class and the name in the drawing's class table, also of what is a proxy, and the
    /// application that brings the class; UTF-8.
    std::string className() const;
    std::string dxfName() const;
    std::string application() const;
};

/// What forEachElement looks at, by ascending handle: entities of classes that make elements, and those whose
/// class is not there. Opens none.
std::vector<AcDbObjectId> possibleElements(const Drawing& drawing);

/// Calls `visit` for each element of a drawing by ascending handle: in model space, in paper space and in
/// blocks. An entity whose class is not there counts if an element's data are found in what is kept of it.
void forEachElement(const Drawing& drawing, const std::function<void(const FoundElement&)>& visit);

/// Calls `visit` for one object. Throws Failure if it is no element.
void visitElement(const Drawing& drawing, AcDbObjectId id,
                  const std::function<void(const FoundElement&)>& visit);

/// Whether the class, as named by a person, is the one with this name: the class's own or the DXF name.
bool isOfClass(const FoundElement& found, const std::string& name);

/// The first general plugin, or null.
orv::elem::Plugin_General* generalOf(const Element& element);
/// All plugins for connected elements, in order.
std::vector<orv::elem::Plugin_ConnectedElements*> connectionsOf(const Element& element);

/// "'Col A' (STR_Beam 12)" for messages and lists: as far as an element tells of itself.
std::string titleOf(const FoundElement& found);

/// The record of model space. Throws Failure.
AcDbObjectId modelSpaceOf(const Drawing& drawing);

} // namespace taldork::cli
