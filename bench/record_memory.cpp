#include "bench_store.h"

#include <cstdio>
#include <fstream>
#include <string>

// Resident memory of 100,000 records of 64 bytes in 1,000 groups, as a multiple of their bytes.

namespace {

// Kilobytes, from the system's own account of this process; 0 where there is none.
long residentKilobytes() {
    std::ifstream status("/proc/self/status");
    std::string word;
    long value = 0;
    while (status >> word)
        if (word == "VmRSS:" && status >> value)
            return value;
    return 0;
}

} // namespace

int main() {
    BenchStore store;
    const long before = residentKilobytes();
    {
        ORV_CDBTransactionManager transaction(store.database(), false);
        fill(store.cdb());
    }
    const long after = residentKilobytes();
    const double payload = double(kGroups) * kKeysPerGroup * sizeof(Payload) / 1024.0;
    std::printf("resident for 100,000 records of 64 bytes: %ld KiB, payload %.0f KiB, ratio %.2f, aim 12\n",
                after - before, payload, double(after - before) / payload);
    return 0;
}
