// Loads, uses and unloads the library again and again in one process, as a host with plug-ins does.
#include <memory>
#include <string>

#include <malloc.h>

#if defined(_WIN32)
#include <windows.h>
#else
#include <dlfcn.h>
#endif

#include <dorvale/datamanager.h>
#include <gtest/gtest.h>

namespace {

#if defined(_WIN32)

using Handle = HMODULE;

Handle load(const std::string& path) { return LoadLibraryA(path.c_str()); }
void unload(Handle library) { FreeLibrary(library); }
bool isLoaded(const std::string& /*path*/) { return GetModuleHandleA("Dorvale.dll") != nullptr; }
void* find(Handle library, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(library, name));
}

std::size_t heapInUse() {
    std::size_t bytes = 0;
    _HEAPINFO entry{};
    while (_heapwalk(&entry) == _HEAPOK) {
        bytes += entry._useflag == _USEDENTRY ? entry._size : 0;
    }
    return bytes;
}

unsigned long handlesInUse() {
    DWORD count = 0;
    GetProcessHandleCount(GetCurrentProcess(), &count);
    return count;
}

#else

using Handle = void*;

Handle load(const std::string& path) { return dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL); }
void unload(Handle library) { dlclose(library); }
bool isLoaded(const std::string& path) {
    return dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD) != nullptr;
}
void* find(Handle library, const char* name) { return dlsym(library, name); }

std::size_t heapInUse() { return mallinfo2().uordblks; }
unsigned long handlesInUse() { return 0; }

#endif

/// Builds an annotation with the library and returns its text.
std::wstring useLibrary(Handle library) {
    using Create = void (*)(double(*)[3], double*, double, Ank_PMI*, int*, double*);
    const auto create =
        reinterpret_cast<Create>(find(library, "_Z15PMICreateAxToAxPA3_dPddP7Ank_PMIPiS1_"));
    if (create == nullptr) {
        return L"no entry point";
    }
    double points[6][3] = {{0, 0, 0}, {0, 0, 0}, {0, 10, 0}, {80, 0, 0}, {80, 0, 0}, {80, 10, 0}};
    double textPoint[3] = {40, 10, 0};
    int status = -1;
    const auto pmi = std::make_unique<Ank_PMI>();
    create(points, textPoint, 3.5, pmi.get(), &status, nullptr);
    return pmi->GetComText().at(0)->GetTexts().at(0)->GetText();
}

TEST(Reload, AHundredTimesLeavesNothingBehind) {
    const std::string path = DORVALE_LIBRARY;
    std::size_t heap = 0;
    unsigned long handles = 0;
    for (int round = 0; round < 100; ++round) {
        Handle library = load(path);
        ASSERT_NE(library, nullptr) << path;
        EXPECT_EQ(useLibrary(library), L"80.00");
        unload(library);
        ASSERT_FALSE(isLoaded(path)) << "round " << round;
        // The first rounds fill the system's own caches.
        if (round == 10) {
            heap = heapInUse();
            handles = handlesInUse();
        }
    }
    EXPECT_EQ(heapInUse(), heap);
    EXPECT_EQ(handlesInUse(), handles);
}

} // namespace
