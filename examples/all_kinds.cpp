// Every kind of annotation, and what a host reads back of each.
#include <iomanip>
#include <iostream>

#include "kinds.h"

namespace {

void print(const std::wstring& text) {
    for (const wchar_t c : text) {
        if (c < 0x80) {
            std::cout << static_cast<char>(c);
        } else {
            std::cout << "<U+" << std::hex << static_cast<unsigned>(c) << std::dec << '>';
        }
    }
}

void print(const char* call, const Ank_PMI& pmi) {
    std::cout << std::left << std::setw(25) << call << "type " << std::setw(3) << pmi.GetType()
              << "leaders " << pmi.GetLeaders().size() << ", extension lines "
              << pmi.GetExLines().size() << ", text";
    for (const Ank_ComText* block : pmi.GetComText()) {
        for (const Ank_Text* line : block->GetTexts()) {
            std::cout << ' ';
            print(line->GetText());
        }
        std::cout << (block->GetEnvelope() == nullptr ? "" : " (framed)");
    }
    std::cout << '\n';
}

} // namespace

int main() {
    for (const AnnotationKind& kind : annotationKinds()) {
        Ank_PMI pmi;
        kind.build(pmi);
        print(kind.call, pmi);
    }
}
