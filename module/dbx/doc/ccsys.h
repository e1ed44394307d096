#pragma once

#include "base/export.h"

#include "adesk.h"

#include <string>

// What older drawings say of a system: project, kind of system, design code. A plain structure; texts of a
// fixed length end in a zero only where they are shorter than their field. Fields named by their type and
// place have no use here: they are copied and filed.
struct TALDORK_API ccsys {
    wchar_t text1[261] = {};
    wchar_t text2[261] = {}; // never filed
    wchar_t projectName[73] = {};
    Adesk::Int32 system = 0;  // an orv::SYSTEM
    Adesk::Int32 zustand = 0; // an orv::ZUSTAND
    Adesk::Int32 numkn = 0;   // how many nodes, and the highest of their numbers
    Adesk::Int32 maxkn = 0;
    Adesk::Int32 iachs = 0; // an orv::GravityOrientation
    Adesk::Int32 igdiv = 10000;
    Adesk::Int32 int1 = 0;
    Adesk::Int32 norm = 0; // index of the design code, from the time before codes had names
    double double1 = 0.0;
    Adesk::Int32 flag1 = 0; // true or false, like the other flags and `nation`
    Adesk::Int32 flag2 = 0;
    double double2 = 0.0;
    Adesk::Int32 int2 = 0;
    Adesk::Int32 int3 = 0;
    char codeName[16] = {};
    char codeCategory[16] = {};
    Adesk::Int32 nation = 0;
    Adesk::Int32 int4 = 0;
    std::wstring versionText;  // as it was read
    std::wstring versionText2; // as it is filed
    Adesk::Int32 int5 = 2;
    unsigned char block1[16] = {};
    Adesk::Int32 int6 = 0;
    Adesk::Int32 chunkValue = 0; // a copy of the number that the object files as binary data

    // Names the design code by `norm`, and empties the first eight bytes of its category. For a number that
    // stands for no code the name stays.
    void oldCodeNameFromNorm();
};
