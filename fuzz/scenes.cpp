// The host on any text: a scene is dumped and drawn, or refused.
#include "host/drawing/draw.h"
#include "host/output/dump.h"
#include "target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    try {
        require(!host::dumpScene(text).empty());
        require(!host::drawScene(text).empty());
    } catch (const host::SceneError& error) {
        require(std::string_view(error.what()).find('\n') == std::string_view::npos);
    }
    return 0;
}
