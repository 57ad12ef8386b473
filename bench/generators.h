// A representative call of every entry point that builds an annotation.
#pragma once

#include <span>

#include <dorvale/dorvale.h>

namespace dorvale::bench {

struct Generator {
    const char* name;
    void (*build)(Ank_PMI& pmi);
};

std::span<const Generator> generators();

Ank_Ellipse quarterCircle(float radius);
/// The length of a quarter circle, its dimension arc just outside.
void buildArcLength(Ank_PMI& pmi, Ank_Ellipse& circle, double radius);

} // namespace dorvale::bench
