// A call of every kind of annotation on a small part, each into an annotation of its own. The
// benchmark times the same calls, on several threads.
#pragma once

#include <vector>

#include <dorvale/dorvale.h>

struct AnnotationKind {
    const char* call;
    void (*build)(Ank_PMI& pmi);
};

/// Every entry point that makes or changes an annotation.
std::vector<AnnotationKind> annotationKinds();

Ank_Ellipse quarterCircle(float radius);
/// The length of a quarter circle, its dimension arc just outside.
void buildArcLength(Ank_PMI& pmi, Ank_Ellipse& circle, double radius);
