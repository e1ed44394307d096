#pragma once

namespace orv {

// Kind of a structural system. Kinds of other numbers come up in records; they have no name here.
enum SYSTEM : int {
    RAUM = 0,  // in space
    EBENE = 1, // in a plane, loaded within it
    PLATTE = 3 // in a plane, loaded across it
};

// The state of a plane system; any number. It counts up from the first kind of plane problem.
enum ZUSTAND : int {};

// The axis that gravity acts along, with its sign.
enum GravityOrientation : int {
    kGravityMinusZ = -3,
    kGravityMinusY = -2,
    kGravityMinusX = -1,
    kGravityNone = 0,
    kGravityPlusX = 1,
    kGravityPlusY = 2,
    kGravityPlusZ = 3
};

} // namespace orv
