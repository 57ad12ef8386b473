// The distance of two holes as a dimension, and its text read back.
#include <iostream>

#include <dorvale/dorvale.h>

int main() {
    // The centre of each hole, and the end of the dimension line above it. The last two of the
    // six points count for other kinds of distances.
    double points[6][3] = {{0, 0, 0}, {0, 15, 0}, {40, 0, 0}, {40, 15, 0}, {}, {}};
    double textPoint[3] = {20, 15, 0};
    int status = -1;

    Ank_PMI dimension;
    PMICreateCntToCnt(points, textPoint, 3.5, &dimension, &status, nullptr);

    for (const Ank_ComText* block : dimension.GetComText()) {
        for (const Ank_Text* line : block->GetTexts()) {
            std::wcout << line->GetText() << L'\n'; // 40.00
        }
    }
    return status;
}
