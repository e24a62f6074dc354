#include "OrvVisualization/NormalFont_p.h"

// The assembler takes the file as it is. An array in a source file would take the compiler minutes.
asm(R"(
    .pushsection .rodata
    .balign 16
    .globl orvNormalFontBegin, orvNormalFontEnd
    .hidden orvNormalFontBegin, orvNormalFontEnd
orvNormalFontBegin:
    .incbin ")" ORV_NORMAL_FONT_FILE R"("
orvNormalFontEnd:
    .popsection
)");

extern "C" {
__attribute__((visibility("hidden"))) extern const std::byte orvNormalFontBegin[];
__attribute__((visibility("hidden"))) extern const std::byte orvNormalFontEnd[];
}

namespace orv::vis {

std::span<const std::byte> normalFontFile() {
    return {orvNormalFontBegin, orvNormalFontEnd};
}

} // namespace orv::vis
