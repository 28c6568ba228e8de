// Counts what a program allocates, for scripts/bench: with this library in LD_PRELOAD the file
// VELA_PROBE gets, when the program ends, the number of allocations and the peak of memory in kB.

#include <atomic>
#include <cstddef>
#include <cstdio>
#include <cstdlib>

// What glibc calls these functions itself.
extern "C" void* __libc_malloc(std::size_t size);
extern "C" void* __libc_calloc(std::size_t number, std::size_t size);
extern "C" void* __libc_realloc(void* memory, std::size_t size);
extern "C" void* __libc_memalign(std::size_t alignment, std::size_t size);

namespace {

std::atomic<unsigned long> nr_allocations;

void count() {
    nr_allocations.fetch_add(1, std::memory_order_relaxed);
}

// The kernel's answer is about the program alone; what a parent is told includes the parent's own
// size from before it started the program.
long peak_in_kb() {
    std::FILE* const status = std::fopen("/proc/self/status", "r");
    char line[256];
    long peak = 0;
    while (status && std::fgets(line, sizeof line, status))
        if (std::sscanf(line, "VmHWM: %ld", &peak) == 1) break;
    if (status) std::fclose(status);
    return peak;
}

__attribute__((destructor)) void report() {
    const unsigned long number = nr_allocations;
    const char* const name = std::getenv("VELA_PROBE");
    std::FILE* const file = name ? std::fopen(name, "w") : nullptr;
    if (!file) return;
    std::fprintf(file, "%lu %ld\n", number, peak_in_kb());
    std::fclose(file);
}

}  // namespace

extern "C" {

void* malloc(std::size_t size) {
    count();
    return __libc_malloc(size);
}

void* calloc(std::size_t number, std::size_t size) {
    count();
    return __libc_calloc(number, size);
}

void* realloc(void* memory, std::size_t size) {
    count();
    return __libc_realloc(memory, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) {
    count();
    return __libc_memalign(alignment, size);
}
}
