// The module frame on Windows: one application object, from load to unload. Other systems need
// nothing of the kind, and leave this source out.
#include <optional>

#include <windows.h>

namespace {

/// What a viewer's framework takes a module for. It carries no data and does nothing more.
class CDorvaleApp {
public:
    BOOL InitInstance() { return TRUE; }
};

std::optional<CDorvaleApp> application;

} // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE /*module*/, DWORD reason, LPVOID /*reserved*/) {
    switch (reason) {
    case DLL_PROCESS_ATTACH:
        return application.emplace().InitInstance();
    case DLL_PROCESS_DETACH:
        application.reset();
        return TRUE;
    default:
        return TRUE;
    }
}
