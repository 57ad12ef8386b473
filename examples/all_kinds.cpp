// Every kind of annotation on a plate with a hole, and what a host reads back of each.
#include <deque>
#include <iomanip>
#include <iostream>
#include <vector>

#include <dorvale/dorvale.h>

namespace {

struct Edge : Ank_Line {
    Edge(const ANK_PNT32& start, const ANK_PNT32& end) {
        SetStartPoint(start);
        SetEndPoint(end);
    }
};

struct Arc : Ank_Ellipse {
    Arc(const ANK_PNT32& center, float radius, const ANK_PNT32& start, const ANK_PNT32& end) {
        SetCenterPoint(center);
        SetRadius(radius, radius);
        SetCoordiantePnt(start, end);
    }
};

/// A placement record, seen from above. A generator leaves plane coordinates in it.
_ank_locate placedAt(double x, double y) {
    return {{x, y, 0}, {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}};
}

struct Made {
    const char* call = "";
    Ank_PMI pmi;
};

void print(const std::wstring& text) {
    for (const wchar_t c : text) {
        if (c < 0x80) {
            std::cout << static_cast<char>(c);
        } else {
            std::cout << "<U+" << std::hex << static_cast<unsigned>(c) << std::dec << '>';
        }
    }
}

void print(const Made& made) {
    const Ank_PMI& pmi = made.pmi;
    std::cout << std::left << std::setw(25) << made.call << "type " << std::setw(3) << pmi.GetType()
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
    std::deque<Made> all;
    const auto add = [&all](const char* call) {
        all.emplace_back().call = call;
        return &all.back().pmi;
    };
    const double h = 3.5; // the height of the text
    double view[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    int kind = 900001;
    int mode = 1;
    int status = -1;

    double points[6][3] = {{}, {0, 10, 0}, {0, 20, 0}, {40, 0, 0}, {40, 10, 0}, {40, 20, 0}};
    double text[3] = {20, 40, 0};
    PMICreateAxToAx(points, text, h, add("PMICreateAxToAx"), &status, nullptr);
    PMICreateCntToCnt(points, text, h, add("PMICreateCntToCnt"), &status, nullptr);
    PMICreatePLNTOPLN(points, text, h, add("PMICreatePLNTOPLN"), &status, nullptr);
    PMICreatePntToFace(points, text, h, add("PMICreatePntToFace"), &status, nullptr);
    PMIUpdateDimesion(add("PMIUpdateDimesion"), points[0], points[3], nullptr, &status);

    // The plate is 40 by 30 with a slanted side, in the model's XY plane.
    Edge bottom({0, 0, 0}, {40, 0, 0});
    Edge top({0, 30, 0}, {40, 30, 0});
    Edge slant({40, 0, 0}, {60, 30, 0});
    Arc hole({20, 15, 0}, 6, {26, 15, 0}, {20, 21, 0});
    _ank_locate at = placedAt(-8, 15);
    PMICreateLinDistDim3D(&bottom, &top, &at, h, add("PMICreateLinDistDim3D"), &status, view,
                          nullptr);
    at = placedAt(-8, 7);
    PMICreateLinDotDim3D(&bottom, &hole, &at, h, add("PMICreateLinDotDim3D"), &status, view);
    Edge side1({0, 0, 0}, {0, -8, 0});
    Edge side2({40, 0, 0}, {40, -8, 0});
    PMICreateDotDistDim3D(&side1, &side2, h, add("PMICreateDotDistDim3D"), &status, view);
    at = placedAt(60, 10);
    PMICreateParallelDim3D(&kind, nullptr, &slant, &slant, nullptr, &at, h,
                           add("PMICreateParallelDim3D"), &status, view);

    double normal[3] = {0, 0, 1}; // of a section plane with this origin and X direction
    double origin[3] = {0, 0, 0};
    double xPoint[3] = {40, 0, 0};
    at = placedAt(20, -8);
    PMICreateClipDim3D(normal, origin, xPoint, &at, h, add("PMICreateClipDim3D"), &status, view);
    at = placedAt(-8, 7);
    PMICreateClipLinDotDim3D(normal, origin, xPoint, &bottom, &hole, &at, h,
                             add("PMICreateClipLinDotDim3D"), &status, view);

    at = placedAt(26, 21);
    PMICreateArcDim3D(nullptr, &hole, &at, h, add("PMICreateArcDim3D"), &status, view, &bottom,
                      &slant);
    at = placedAt(26, 21);
    PMICreateClipArcDim3D(nullptr, normal, origin, xPoint, &hole, &at, h,
                          add("PMICreateClipArcDim3D"), &status, view, &bottom, &slant);
    at = placedAt(32, 24);
    PMICreateDiameterDim3D(&kind, &hole, &at, nullptr, h, add("PMICreateDiameterDim3D"), &status,
                           view);
    at = placedAt(32, 24);
    PMICreateRadiusDim3D(&kind, &hole, &at, nullptr, h, add("PMICreateRadiusDim3D"), &status, view);

    int gaps = 0;
    double gapEnds[4][3] = {};
    at = placedAt(38, 10);
    PMICreateAngleDim(&mode, &bottom, &slant, &at, h, add("PMICreateAngleDim"), &status, gaps,
                      gapEnds, view);
    int flags[2] = {};
    _ank_element pickedBottom{&bottom, {20, 0, 0}};
    _ank_element pickedSlant{&slant, {50, 15, 0}};
    at = placedAt(38, 10);
    PMICreateAngleDim3D(&mode, &flags[0], &flags[1], &pickedBottom, &pickedSlant, &at, nullptr,
                        nullptr, h, add("PMICreateAngleDim3D"), &status, view);

    std::vector<PMITextLine> lines = {{0, L"DEBURR"}, {0, L"ALL EDGES"}};
    Envelope frame{true, 0x00FFFFFF, 0x00000000};
    Ank_PMI* note = add("PMICreateNote3D, framed");
    PMICreateNote3D(lines, origin, text, 0, true, L"", h, note, &status);
    PMISetEnvelope(1, true, false, true, frame, note);

    for (const Made& made : all) {
        print(made);
    }
    return status;
}
