#pragma once

// What a drawing is made for.
enum AcGiRegenType {
    eAcGiRegenTypeInvalid = 0,
    kAcGiStandardDisplay = 2,
    kAcGiHideOrShadeCommand = 3,
    kAcGiShadedDisplay = 4,
    kAcGiForExplode = 5,
    kAcGiSaveWorldDrawForProxy = 6,
    kAcGiForExtents = 7
};

enum AcGiFillType { kAcGiFillAlways = 1, kAcGiFillNever = 2 };

// What a chord stands for, when it is asked how far it may be from it.
enum AcGiDeviationType {
    kAcGiMaxDevForCircle = 0,
    kAcGiMaxDevForCurve = 1,
    kAcGiMaxDevForBoundary = 2,
    kAcGiMaxDevForIsoline = 3,
    kAcGiMaxDevForFacet = 4
};

// An arc as it is, with its two radii, or with its chord.
enum AcGiArcType { kAcGiArcSimple = 0, kAcGiArcSector = 1, kAcGiArcChord = 2 };

enum AcGiVisibility { kAcGiInvisible = 0, kAcGiVisible = 1, kAcGiSilhouette = 2 };
