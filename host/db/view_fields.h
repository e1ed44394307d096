#pragma once

#include "db/field_stream.h"

namespace embedded {

// The parts that saved views and viewports file alike.
template <class View, class Stream>
void fileView(View& v, Stream& s) {
    s.real(v.height);
    s.real(v.width);
    s.rawPoint(v.center);
    s.point(v.target);
    s.vector(v.direction);
    s.real(v.twist);
    s.real(v.lensLength);
    s.real(v.frontClip);
    s.real(v.backClip);
    s.bits(v.mode, 4);
    s.byte(v.renderMode);
}

template <class Ucs, class Stream>
void fileUcs(Ucs& u, Stream& s) {
    s.point(u.origin);
    s.vector(u.xAxis);
    s.vector(u.yAxis);
    s.real(u.elevation);
    s.int16(u.orthographic);
}

} // namespace embedded
