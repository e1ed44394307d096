#pragma once

#include "db/clone/clone_filers.h"

class AcDbObject;

namespace embedded {

// The ids that stand as handles in bytes: among an xrecord's values, and in extended data. What does not hold
// together is left alone from there on.

void gatherRawReferences(const AcDbObject& object, std::vector<FiledReference>& references);

// Puts other ids into the bytes of a clone, whose original is `own`.
void translateRawReferences(AcDbObject& clone, const AcDbObjectId& own, const Translate& translate);

} // namespace embedded
