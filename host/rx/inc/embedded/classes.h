#pragma once

namespace embedded::rx {

// How often acrxBuildClassHierarchy has run.
unsigned hierarchyBuilds();

// Goes up with each registration and each removal of a class: what was looked up by name under an older
// number is to be looked up again.
unsigned classGeneration();

} // namespace embedded::rx
