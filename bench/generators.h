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

/// The length of a quarter circle of a radius, its dimension arc just outside.
void buildArcOfRadius(Ank_PMI& pmi, float radius);

} // namespace dorvale::bench
