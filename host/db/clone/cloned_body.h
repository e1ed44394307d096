#pragma once

#include "db/clone/clone_filers.h"

#include <memory>

class AcDbObject;

namespace embedded {

// Proxies and objects of kinds that the host has no code for: what they hold stays bytes, and the handles
// among them are the ids that they refer to.

// Whether the object is such a one. Cheap for all others, unlike the question for its bytes.
bool holdsBytes(const AcDbObject& object);
// Not a proxy whose class forbids it.
bool mayBeCloned(const AcDbObject& object);

// A fresh one like the other, with the same bytes.
std::unique_ptr<AcDbObject> makeBodyHolder(const AcDbObject& object);

// Appends what the object's bytes refer to.
void gatherBodyReferences(const AcDbObject& object, std::vector<FiledReference>& references);
// Whether it holds others that only its file chains (the vertices of a polyline).
bool chainsOthers(const AcDbObject& object);

// Puts other ids into the bytes of a clone; `own` is the original, from whose handle some are counted.
// `otherDrawing`: the clone's type is looked up by its class's name.
void translateBody(AcDbObject& clone, const AcDbObjectId& own, bool otherDrawing, const Translate& translate);

} // namespace embedded
