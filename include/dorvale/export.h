/// @file
/// Marks what the two libraries export. The only place that knows a compiler's own words for it.
#pragma once

#if defined(_WIN32)
#define DORVALE_EXPORTED __declspec(dllexport)
#define DORVALE_IMPORTED __declspec(dllimport)
#else
#define DORVALE_EXPORTED __attribute__((visibility("default")))
#define DORVALE_IMPORTED
#endif

// CMake defines <target>_EXPORTS while it compiles the sources of a shared library.
#if defined(Dorvale_EXPORTS)
#define DORVALE_API DORVALE_EXPORTED
#else
#define DORVALE_API DORVALE_IMPORTED
#endif

#if defined(DataManager_EXPORTS)
#define DATAMANAGER_API DORVALE_EXPORTED
#else
#define DATAMANAGER_API DORVALE_IMPORTED
#endif
