#include <iostream>
#include "modelprocess.h"
using namespace host::step;
int main(int, char** argv) {
    try {
        ModelProcess p(argv[1], {});
        Model m = p.model();
        std::cout << m.title << " " << m.unit << " " << m.dimensions.size() << " planes " << m.planes.size() << " hull " << m.hull.size() << " parts " << m.parts << '\n';
        for (auto& [k, n] : m.tolerances) std::cout << k << ' ' << n << "; ";
        for (auto& [k, n] : m.datums) std::cout << k << ' ' << n << "; ";
        std::cout << '\n';
        auto show = [](const Feature& f) {
            for (auto& x : f.faces) std::cout << " F" << int(x.kind) << "(#" << x.entity << " r" << x.radius << (x.hollow ? "h" : "") << " a" << x.axis[0] << ',' << x.axis[1] << ',' << x.axis[2] << " e" << x.edges.size() << ")";
            for (auto& x : f.edges) std::cout << " E" << int(x.kind) << "(r" << x.radius << " l" << x.length << ")";
            for (auto& x : f.points) std::cout << " P(" << x[0] << ',' << x[1] << ',' << x[2] << ")";
            for (auto& x : f.others) std::cout << " O" << x;
        };
        for (auto& d : m.dimensions) {
            std::cout << '#' << d.entity << ' ' << int(d.kind) << ' ' << d.name << " nom " << d.nominal.value_or(-999) << d.unit << " +" << d.upper.value_or(-999) << " " << d.lower.value_or(-999) << " lim" << d.limits << " fit" << d.fit << " dec" << d.decimals.value_or(-1) << " mod" << int(d.modifier);
            for (auto& r : d.remarks) std::cout << " '" << r << "'";
            std::cout << "\n    1:"; show(d.first); std::cout << "\n    2:"; show(d.second); std::cout << '\n';
        }
        if (argv[2]) { auto pic = p.picture({1,0,0},{0,1,0}); std::cout << pic.edges.size() << " mesh " << pic.fromMesh << '\n'; }
    } catch (const StepError& e) { std::cout << e.what() << '\n'; return 2; }
}
