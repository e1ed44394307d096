#pragma once

#include "AdAChar.h"
#include "adesk.h"

using ads_real = double;
using ads_point = ads_real[3];
// An object as the host's plain interface names it: its id as a number, and 0.
using ads_name = Adesk::IntPtr[2];

// A run of bytes as the host's plain interface hands it around; the owner of `buf` is said where it is used.
struct ads_binary {
    short clen;
    char* buf;
};

union ads_u_val {
    ads_real rreal;
    ads_real rpoint[3];
    short rint;
    ACHAR* rstring;
    ads_name rlname;
    Adesk::Int32 rlong;
    Adesk::Int64 mnInt64;
    ads_binary rbinary;
    unsigned char ihandle[8];
};

// One value with its group code, in a chain. Which member of `resval` holds it follows from the code: reals
// rreal, points rpoint, 16-bit numbers and switches rint, 32-bit ones rlong, 64-bit ones mnInt64, texts and
// handles rstring, object ids rlname, binary data rbinary.
struct resbuf {
    resbuf* rbnext = nullptr;
    short restype = 0;
    ads_u_val resval = {};
};

// A fresh value with this code, all zero. The caller gives it back with acutRelRb.
resbuf* acutNewRb(int code);
// Gives a chain back with the texts and the binary data in it, which must be the host's buffers. RTNORM, also
// for null.
int acutRelRb(resbuf* chain);
