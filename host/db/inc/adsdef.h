#pragma once

// A run of bytes as the host's plain interface hands it around; the owner of `buf` is said where it is used.
struct ads_binary {
    short clen;
    char* buf;
};
