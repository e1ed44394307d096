#include <dwg.h>

#include <cstddef>
#include <cstdio>
#include <cstring>

// The independent reader's public calls, apart from the rest: its header does not live beside other code.

extern "C" int dwg_write_file(const char* filename, const Dwg_Data* dwg);

bool independentRead(const char* file, std::size_t& objects, const char* out) {
    Dwg_Data drawing;
    std::memset(&drawing, 0, sizeof drawing);
    const int error = dwg_read_file(file, &drawing);
    bool good = error < DWG_ERR_CRITICAL;
    objects = drawing.num_objects;
    if (good && out != nullptr) {
        std::remove(out);
        good = dwg_write_file(out, &drawing) < DWG_ERR_CRITICAL;
    }
    dwg_free(&drawing);
    return good;
}
