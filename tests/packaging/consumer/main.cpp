// The smallest host: one distance dimension, and its text read back.
#include <iostream>

#include <dorvale/dorvale.h>

int main() {
    double points[6][3] = {{0, 0, 0}, {0, 0, 0}, {0, 10, 0}, {80, 0, 0}, {80, 0, 0}, {80, 10, 0}};
    double textPoint[3] = {40, 10, 0};
    Ank_PMI pmi;
    int status = -1;
    PMICreateAxToAx(points, textPoint, 3.5, &pmi, &status, nullptr);
    const std::wstring text = pmi.GetComText().at(0)->GetTexts().at(0)->GetText();
    std::cout << std::string(text.begin(), text.end()) << '\n';
    return status == 0 && text == L"80.00" ? 0 : 1;
}
