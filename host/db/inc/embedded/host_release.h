#pragma once

namespace embedded {

// The numbers by which the host answers which release it is.
struct HostRelease {
    int major = 19;
    int minor = 1;
};

// From now on the host is of that release for whoever asks. Answers the one before, so that it can be put
// back.
HostRelease setHostRelease(const HostRelease& release);

} // namespace embedded
