#include <iostream>
#include "host/step/derive.h"
#include "host/step/text.h"
#include "host/step/modelprocess.h"
#include "host/step/modelprocess.h"
using namespace host::step;
int main(int, char** argv) {
    try {
        ModelProcess p(argv[1], {});
        Model m = p.model();
        std::cout << m.title << " " << m.unit << " " << m.dimensions.size() << " planes " << m.planes.size() << " hull " << m.hull.size() << " parts " << m.parts << '\n';
        for (auto& [k, n] : m.tolerances) std::cout << k << ' ' << n << "; ";
        for (auto& [k, n] : m.datums) std::cout << k << ' ' << n << "; ";
        std::cout << '\n';
        for (auto& d : m.dimensions) {
            auto o = derive(d, m);
            std::cout << '#' << d.entity << ' ' << int(d.kind) << ' ' << d.name << " fate " << int(o.fate) << " [" << oneLine(o.text) << "] shown " << int(o.geometry.shown) << " measured " << o.geometry.measured.value_or(-1) << d.unit << ' ' << o.reason << '\n';
        }
        if (argv[2]) { auto pic = p.picture({1,0,0},{0,1,0}); std::cout << pic.edges.size() << " mesh " << pic.fromMesh << '\n'; }
    } catch (const StepError& e) { std::cout << e.what() << '\n'; return 2; }
}
