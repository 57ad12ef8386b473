/// @file
/// Makes the STEP files that the tests read: small parts with dimensions of every kind. Their text
/// is committed; this is what it came from.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <exception>
#include <fstream>
#include <functional>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include <BRepAdaptor_Curve.hxx>
#include <BRepAdaptor_Surface.hxx>
#include <BRepAlgoAPI_Cut.hxx>
#include <BRepAlgoAPI_Fuse.hxx>
#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_MakePolygon.hxx>
#include <BRepBuilderAPI_NurbsConvert.hxx>
#include <BRepFilletAPI_MakeFillet.hxx>
#include <BRepGProp.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeCone.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <BRepPrimAPI_MakePrism.hxx>
#include <BRepPrimAPI_MakeRevol.hxx>
#include <BRepPrimAPI_MakeSphere.hxx>
#include <BRep_Builder.hxx>
#include <GProp_GProps.hxx>
#include <Interface_Static.hxx>
#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <Message_PrinterOStream.hxx>
#include <STEPControl_Writer.hxx>
#include <ShapeUpgrade_UnifySameDomain.hxx>
#include <StepData_StepModel.hxx>
#include <StepRepr_RepresentationContext.hxx>
#include <StepShape_AdvancedBrepShapeRepresentation.hxx>
#include <StepShape_AdvancedFace.hxx>
#include <StepShape_EdgeCurve.hxx>
#include <StepShape_ShapeDefinitionRepresentation.hxx>
#include <TopExp.hxx>
#include <TopLoc_Location.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Compound.hxx>
#include <TransferBRep.hxx>
#include <TransferBRep_ShapeMapper.hxx>
#include <XSControl_TransferWriter.hxx>
#include <XSControl_WorkSession.hxx>
#include <gp_Ax1.hxx>
#include <gp_Ax2.hxx>
#include <gp_Cylinder.hxx>
#include <gp_Pln.hxx>

namespace {

using Faces = std::vector<int>;

std::string reference(int number) { return '#' + std::to_string(number); }

std::string list(const std::vector<int>& numbers) {
    std::string text;
    for (const int number : numbers)
        text += (text.empty() ? "(" : ",") + reference(number);
    return text + ")";
}

/// A STEP number always has its point.
std::string real(double value) {
    std::ostringstream text;
    text.precision(12);
    text << value;
    return text.str().find_first_of(".e") == std::string::npos ? text.str() + "." : text.str();
}

/// A shape's file, and the product data written behind its geometry.
class PartFile {
public:
    PartFile(const TopoDS_Shape& shape, const std::string& name, bool inches) : shape_(shape) {
        Interface_Static::SetCVal("write.step.schema", "AP242DIS");
        Interface_Static::SetCVal("write.step.unit", inches ? "IN" : "MM");
        Interface_Static::SetCVal("write.step.product.name", name.c_str());
        writer_.Transfer(shape, STEPControl_AsIs);
        model_ = writer_.Model();
        const int count = model_->NbEntities();
        next_ = count + 1000;
        for (int i = 1; i <= count; ++i) {
            const auto link =
                Handle(StepShape_ShapeDefinitionRepresentation)::DownCast(model_->Value(i));
            if (link.IsNull() || !link->UsedRepresentation()->IsKind(
                                     STANDARD_TYPE(StepShape_AdvancedBrepShapeRepresentation)))
                continue;
            products_.push_back(model_->Number(link->Definition().Value()));
            representations_.push_back(model_->Number(link->UsedRepresentation()));
            contexts_.push_back(model_->Number(link->UsedRepresentation()->ContextOfItems()));
        }
        length_ = inches ? inch() : millimetre();
        angle_ = degree();
    }

    int add(const std::string& text) {
        lines_ += reference(next_) + "=" + text + ";\n";
        return next_++;
    }

    /// The file's faces of a kind that pass a test.
    Faces faces(const std::function<bool(const BRepAdaptor_Surface&)>& test) const {
        Faces found;
        TopTools_IndexedMapOfShape all;
        TopExp::MapShapes(shape_, TopAbs_FACE, all);
        for (int i = 1; i <= all.Extent(); ++i)
            if (test(BRepAdaptor_Surface(TopoDS::Face(all(i)))))
                addNumber(all(i), STANDARD_TYPE(StepShape_AdvancedFace), found);
        return found;
    }

    /// Plane faces square to a direction at a place along it.
    Faces planes(const gp_Dir& normal, double at) const {
        return faces([&](const BRepAdaptor_Surface& surface) {
            return surface.GetType() == GeomAbs_Plane &&
                   surface.Plane().Axis().Direction().IsParallel(normal, 1e-6) &&
                   std::abs(gp_Vec(surface.Plane().Location().XYZ()) * gp_Vec(normal) - at) < 1e-6;
        });
    }

    Faces cylinders(double radius, const gp_Pnt& near, double within = 1e-3) const {
        return faces([&](const BRepAdaptor_Surface& surface) {
            return surface.GetType() == GeomAbs_Cylinder &&
                   std::abs(surface.Cylinder().Radius() - radius) < 1e-6 &&
                   gp_Lin(surface.Cylinder().Axis()).Distance(near) < within;
        });
    }

    Faces ofType(GeomAbs_SurfaceType type) const {
        return faces([&](const BRepAdaptor_Surface& surface) { return surface.GetType() == type; });
    }

    /// Edges that pass a test.
    Faces edges(const std::function<bool(const BRepAdaptor_Curve&)>& test) const {
        Faces found;
        TopTools_IndexedMapOfShape all;
        TopExp::MapShapes(shape_, TopAbs_EDGE, all);
        for (int i = 1; i <= all.Extent(); ++i)
            if (test(BRepAdaptor_Curve(TopoDS::Edge(all(i)))))
                addNumber(all(i), STANDARD_TYPE(StepShape_EdgeCurve), found);
        return found;
    }

    /// An aspect with its items, each by a usage of its own, or all wrapped in one.
    int aspect(const Faces& items, bool wrapped = false) {
        if (items.empty())
            std::cerr << "an aspect without items, before " << reference(next_) << '\n';
        if (items.size() == 1 || wrapped) {
            const int own = add("SHAPE_ASPECT('',''," + reference(products_[part]) + ",.T.)");
            const std::string item =
                wrapped ? "SET_REPRESENTATION_ITEM(" + list(items) + ")" : reference(items.front());
            add("GEOMETRIC_ITEM_SPECIFIC_USAGE('',''," + reference(own) + "," +
                reference(representations_[part]) + "," + item + ")");
            return own;
        }
        const int whole =
            add("COMPOSITE_SHAPE_ASPECT('',''," + reference(products_[part]) + ",.T.)");
        for (const int item : items)
            add("SHAPE_ASPECT_RELATIONSHIP('',$," + reference(whole) + "," +
                reference(aspect({item})) + ")");
        return whole;
    }

    int size(const std::string& name, int aspect) {
        return add("DIMENSIONAL_SIZE(" + reference(aspect) + ",'" + name + "')");
    }
    int location(const std::string& name, int from, int to) {
        return add("DIMENSIONAL_LOCATION('" + name + "',$," + reference(from) + "," +
                   reference(to) + ")");
    }
    int angularLocation(int from, int to) {
        return add("ANGULAR_LOCATION('angle',$," + reference(from) + "," + reference(to) +
                   ",.EQUAL.)");
    }
    int angularSize(int aspect) {
        return add("ANGULAR_SIZE(" + reference(aspect) + ",'angle',.EQUAL.)");
    }

    /// An item with a number, in the file's unit or in degrees.
    int item(const std::string& name, double value, int decimals, bool angular) {
        const std::string kind = angular ? "PLANE_ANGLE" : "LENGTH";
        const std::string unit = reference(angular ? angle_ : length_);
        const std::string qualified =
            decimals < 0 ? ""
                         : "QUALIFIED_REPRESENTATION_ITEM((" +
                               reference(add("VALUE_FORMAT_TYPE_QUALIFIER('NR2 3." +
                                             std::to_string(decimals) + "')")) +
                               "))";
        const std::string measure = "MEASURE_REPRESENTATION_ITEM()MEASURE_WITH_UNIT(" + kind +
                                    "_MEASURE(" + real(value) + ")," + unit + ")";
        const std::string typed = kind + "_MEASURE_WITH_UNIT()";
        return add("(" + (angular ? measure + typed : typed + measure) + qualified +
                   "REPRESENTATION_ITEM('" + name + "'))");
    }

    void values(int dimension, const std::vector<int>& items) {
        const int shown = add("SHAPE_DIMENSION_REPRESENTATION(''," + list(items) + "," +
                              reference(contexts_[part]) + ")");
        add("DIMENSIONAL_CHARACTERISTIC_REPRESENTATION(" + reference(dimension) + "," +
            reference(shown) + ")");
    }
    void value(int dimension, double nominal, int decimals = -1, bool angular = false) {
        values(dimension, {item("nominal value", nominal, decimals, angular)});
    }
    void limits(int dimension, double nominal, double upper, double lower) {
        values(dimension,
               {item("nominal value", nominal, -1, false), item("upper limit", upper, -1, false),
                item("lower limit", lower, -1, false)});
    }
    int note(const std::string& word) {
        return add("DESCRIPTIVE_REPRESENTATION_ITEM('dimensional note','" + word + "')");
    }
    void tolerance(int dimension, double lower, double upper, bool angular = false) {
        const std::string kind = angular ? "PLANE_ANGLE" : "LENGTH";
        const auto measure = [&](double bound) {
            return add(kind + "_MEASURE_WITH_UNIT(" + kind + "_MEASURE(" + real(bound) + ")," +
                       reference(angular ? angle_ : length_) + ")");
        };
        const int low = measure(lower);
        const int high = measure(upper);
        add("PLUS_MINUS_TOLERANCE(" +
            reference(add("TOLERANCE_VALUE(" + reference(low) + "," + reference(high) + ")")) +
            "," + reference(dimension) + ")");
    }
    void fit(int dimension, const std::string& form, const std::string& grade) {
        add("PLUS_MINUS_TOLERANCE(" +
            reference(add("LIMITS_AND_FITS('" + form + "','hole','" + grade + "','')")) + "," +
            reference(dimension) + ")");
    }
    int measure(double value) {
        return add("LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(" + real(value) + ")," +
                   reference(length_) + ")");
    }
    int product() const { return products_[part]; }
    int representation() const { return representations_[part]; }

    void write(const std::string& path) {
        writer_.Write(path.c_str());
        std::ifstream in(path);
        std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
        in.close();
        text.insert(text.rfind("ENDSEC;"), lines_);
        // The time of writing is of no interest.
        const std::size_t name = text.find("FILE_NAME");
        const std::size_t end = text.find(';', name);
        text.replace(name, end - name,
                     "FILE_NAME('part','2026-01-01T00:00:00',('Dorvale'),(''),'','','')");
        std::ofstream(path) << text;
    }

    /// Which part of an assembly aspects belong to.
    std::size_t part = 0;

private:
    void addNumber(const TopoDS_Shape& shape, const Handle(Standard_Type) & type,
                   Faces& found) const {
        const auto& process = writer_.WS()->TransferWriter()->FinderProcess();
        // A part of an assembly is written once, where it was made.
        for (const TopoDS_Shape& written : {shape, shape.Located(TopLoc_Location())}) {
            Handle(Standard_Transient) entity;
            const auto mapper = TransferBRep::ShapeMapper(process, written);
            if (!process->FindTypedTransient(mapper, type, entity) || entity.IsNull())
                continue;
            const int number = model_->Number(entity);
            if (number > 0 && std::find(found.begin(), found.end(), number) == found.end())
                found.push_back(number);
            return;
        }
    }

    int millimetre() { return add("(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.))"); }
    int inch() {
        const int base =
            add("LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(25.4)," + reference(millimetre()) + ")");
        const int exponents = add("DIMENSIONAL_EXPONENTS(1.,0.,0.,0.,0.,0.,0.)");
        return add("(CONVERSION_BASED_UNIT('INCH'," + reference(base) +
                   ")LENGTH_UNIT()NAMED_UNIT(" + reference(exponents) + "))");
    }
    int degree() {
        const int radian = add("(NAMED_UNIT(*)PLANE_ANGLE_UNIT()SI_UNIT($,.RADIAN.))");
        const int base = add("PLANE_ANGLE_MEASURE_WITH_UNIT(PLANE_ANGLE_MEASURE("
                             "0.0174532925199433)," +
                             reference(radian) + ")");
        const int exponents = add("DIMENSIONAL_EXPONENTS(0.,0.,0.,0.,0.,0.,0.)");
        return add("(CONVERSION_BASED_UNIT('DEGREE'," + reference(base) + ")NAMED_UNIT(" +
                   reference(exponents) + ")PLANE_ANGLE_UNIT())");
    }

    TopoDS_Shape shape_;
    STEPControl_Writer writer_;
    Handle(StepData_StepModel) model_;
    std::vector<int> products_;
    std::vector<int> representations_;
    std::vector<int> contexts_;
    std::string lines_;
    int next_ = 0;
    int length_ = 0;
    int angle_ = 0;
};

TopoDS_Shape box(double x, double y, double z, const gp_Pnt& corner = {}) {
    return BRepPrimAPI_MakeBox(corner, x, y, z).Shape();
}

TopoDS_Shape cylinder(const gp_Pnt& foot, const gp_Dir& axis, double radius, double height) {
    return BRepPrimAPI_MakeCylinder(gp_Ax2(foot, axis), radius, height).Shape();
}

TopoDS_Shape cut(const TopoDS_Shape& from, const TopoDS_Shape& what) {
    return BRepAlgoAPI_Cut(from, what).Shape();
}

TopoDS_Shape fuse(const TopoDS_Shape& one, const TopoDS_Shape& other) {
    const TopoDS_Shape both = BRepAlgoAPI_Fuse(one, other).Shape();
    ShapeUpgrade_UnifySameDomain unify(both);
    unify.Build();
    return unify.Shape();
}

const gp_Dir kX(1, 0, 0);
const gp_Dir kY(0, 1, 0);
const gp_Dir kZ(0, 0, 1);

/// Millimetres: four holes, a slot, a pocket; wrapped lists, limits, a fit, a depth by its floor, a
/// nominal that the part contradicts, one without a value, a thread without a face.
void makePlate(const std::string& path) {
    TopoDS_Shape shape = box(120, 80, 12);
    const gp_Pnt holes[] = {{10, 10, 0}, {110, 10, 0}, {10, 70, 0}, {110, 70, 0}};
    for (const gp_Pnt& hole : holes)
        shape = cut(shape, cylinder(hole, kZ, 4.5, 12));
    const TopoDS_Shape slot =
        fuse(fuse(box(28, 12, 12, {26, 34, 0}), cylinder({26, 40, 0}, kZ, 6, 12)),
             cylinder({54, 40, 0}, kZ, 6, 12));
    shape = cut(shape, slot);
    shape = cut(shape, box(25, 30, 4, {75, 25, 8}));
    PartFile file(shape, "PLATE", false);

    const int left = file.aspect(file.planes(kX, 0));
    const int right = file.aspect(file.planes(kX, 120));
    const int length = file.location("linear distance", left, right);
    file.value(length, 120, 1);
    file.tolerance(length, -0.2, 0.2);
    const int front = file.aspect(file.planes(kY, 0));
    const int width = file.location("linear distance", front, file.aspect(file.planes(kY, 80)));
    file.value(width, 80, 1);
    file.tolerance(width, 0, 0.2);
    Faces faces = file.planes(kZ, 0);
    const Faces top = file.planes(kZ, 12);
    faces.insert(faces.end(), top.begin(), top.end());
    const int thickness = file.size("thickness", file.aspect(faces));
    file.limits(thickness, 12, 12.1, 11.9);

    Faces pattern;
    for (const gp_Pnt& hole : holes) {
        const Faces one = file.cylinders(4.5, hole);
        pattern.insert(pattern.end(), one.begin(), one.end());
    }
    const int bores = file.size("diameter", file.aspect(pattern, /*wrapped=*/true));
    file.value(bores, 9, 0);
    file.fit(bores, "H", "7");
    const auto bore = [&](int i) { return file.aspect(file.cylinders(4.5, holes[i])); };
    const int across = file.location("linear distance", bore(0), bore(1));
    file.values(across, {file.item("nominal value", 100, 0, false), file.note("theoretical")});
    const int up = file.location("linear distance", bore(0), bore(2));
    file.values(up, {file.item("nominal value", 60, 0, false), file.note("theoretical")});
    const int edge = file.location("linear distance", front, bore(1));
    file.value(edge, 10, 1);
    file.tolerance(edge, -0.1, 0.1);

    const int slotEnds =
        file.location("linear distance", file.aspect(file.cylinders(6, {26, 40, 0})),
                      file.aspect(file.cylinders(6, {54, 40, 0})));
    file.value(slotEnds, 28, 1);
    const int slotWhole =
        file.location("linear distance outer outer", file.aspect(file.cylinders(6, {26, 40, 0})),
                      file.aspect(file.cylinders(6, {54, 40, 0})));
    file.values(slotWhole, {file.item("nominal value", 40, 0, false), file.note("auxiliary")});
    Faces sides = file.planes(kY, 34);
    const Faces other = file.planes(kY, 46);
    sides.insert(sides.end(), other.begin(), other.end());
    file.value(file.size("thickness", file.aspect(sides)), 12, 1);
    Faces ends = file.cylinders(6, {26, 40, 0});
    const Faces otherEnd = file.cylinders(6, {54, 40, 0});
    ends.insert(ends.end(), otherEnd.begin(), otherEnd.end());
    file.value(file.size("radius", file.aspect(ends)), 6, 0);

    const int floor = file.aspect(file.planes(kZ, 8));
    file.value(file.location("linear distance", floor, floor), 4, 1);
    const int wrong = file.location("linear distance", file.aspect(file.planes(kX, 75)),
                                    file.aspect(file.planes(kX, 100)));
    file.value(wrong, 26, 1);
    file.location("linear distance", file.aspect(file.planes(kY, 25)), front);

    const int line =
        file.add("POLYLINE('',(" + reference(file.add("CARTESIAN_POINT('',(10.,10.,0.))")) + "," +
                 reference(file.add("CARTESIAN_POINT('',(10.,10.,12.))")) + "))");
    const int curves = file.add("GEOMETRIC_CURVE_SET('thread',(" + reference(line) + "))");
    const int thread = file.size("diameter", file.aspect({curves}));
    file.value(thread, 10, 0);

    const int datum = file.add("DATUM('',$," + reference(file.product()) + ",.F.,'A')");
    file.add("FLATNESS_TOLERANCE('',''," + reference(file.measure(0.1)) + "," +
             reference(file.aspect(file.planes(kZ, 0))) + ")");
    (void)datum;
    file.write(path);
}

/// Millimetres: a turned part with shoulders, a chamfer, a groove and a spherical end.
void makeShaft(const std::string& path) {
    TopoDS_Shape shape = cylinder({0, 0, 0}, kX, 10, 30);
    shape = fuse(shape, cylinder({30, 0, 0}, kX, 15, 40));
    shape = fuse(shape, cylinder({70, 0, 0}, kX, 8, 25));
    shape = fuse(shape, BRepPrimAPI_MakeSphere(gp_Pnt(95, 0, 0), 10).Shape());
    // A chamfer of 45 degrees at the left end.
    const TopoDS_Shape ring = cut(cylinder({-1, 0, 0}, kX, 20, 3),
                                  BRepPrimAPI_MakeCone(gp_Ax2({-1, 0, 0}, kX), 7, 10, 3).Shape());
    shape = cut(shape, ring);
    // A shoulder fillet is a part of a torus.
    BRepFilletAPI_MakeFillet fillet(shape);
    TopTools_IndexedMapOfShape edges;
    TopExp::MapShapes(shape, TopAbs_EDGE, edges);
    for (int i = 1; i <= edges.Extent(); ++i) {
        const BRepAdaptor_Curve curve(TopoDS::Edge(edges(i)));
        if (curve.GetType() == GeomAbs_Circle && std::abs(curve.Circle().Radius() - 10) < 1e-6 &&
            std::abs(curve.Circle().Location().X() - 30) < 1e-6)
            fillet.Add(2, TopoDS::Edge(edges(i)));
    }
    shape = fillet.Shape();
    PartFile file(shape, "SHAFT", false);

    const auto diameter = [&](double radius, double nominal, int decimals) {
        const int size = file.size("diameter", file.aspect(file.cylinders(radius, {50, 0, 0})));
        file.value(size, nominal, decimals);
        return size;
    };
    file.fit(diameter(10, 20, 0), "h", "6");
    file.tolerance(diameter(15, 30, 2), -0.05, 0.02);
    file.limits(file.size("diameter", file.aspect(file.cylinders(8, {50, 0, 0}))), 16, 16.05,
                15.95);
    file.value(file.size("spherical diameter", file.aspect(file.ofType(GeomAbs_Sphere))), 20, 1);
    file.value(file.size("radius", file.aspect(file.ofType(GeomAbs_Torus))), 2, 1);
    file.value(file.size("toroidal major radius", file.aspect(file.ofType(GeomAbs_Torus))), 12, 1);
    const int cone = file.angularSize(file.aspect(file.ofType(GeomAbs_Cone)));
    file.value(cone, 90, 0, true);
    file.tolerance(cone, -1, 1, true);
    const int shoulder = file.aspect(file.planes(kX, 30));
    file.value(file.location("linear distance", file.aspect(file.planes(kX, 0)), shoulder), 30, 1);
    file.value(file.location("linear distance", shoulder, file.aspect(file.planes(kX, 70))), 40, 1);
    file.value(file.location("linear distance", shoulder, file.aspect(file.ofType(GeomAbs_Sphere))),
               65, 1);
    file.write(path);
}

/// Inches: an angle of 120 degrees, fillets, an arc's length, a reference, a controlled radius.
void makeBracket(const std::string& path) {
    constexpr double kInch = 25.4;
    const double slope = std::tan(3.14159265358979 / 6);
    const auto at = [&](double x, double y) { return gp_Pnt(x * kInch, y * kInch, 0); };
    BRepBuilderAPI_MakePolygon outline;
    outline.Add(at(0, 0));
    outline.Add(at(4, 0));
    outline.Add(at(4, 0.5));
    outline.Add(at(0.5, 0.5));
    outline.Add(at(0.5 - 2.5 * slope, 3));
    outline.Add(at(0 - 3 * slope, 3));
    outline.Close();
    TopoDS_Shape shape = BRepPrimAPI_MakePrism(BRepBuilderAPI_MakeFace(outline.Wire()).Face(),
                                               gp_Vec(0, 0, 1.5 * kInch))
                             .Shape();
    for (const double x : {2.0, 3.25})
        shape = cut(shape, cylinder({x * kInch, 0, 0.75 * kInch}, kY, 0.1405 * kInch, 0.5 * kInch));
    BRepFilletAPI_MakeFillet fillet(shape);
    TopTools_IndexedMapOfShape edges;
    TopExp::MapShapes(shape, TopAbs_EDGE, edges);
    for (int i = 1; i <= edges.Extent(); ++i) {
        const BRepAdaptor_Curve curve(TopoDS::Edge(edges(i)));
        if (curve.GetType() != GeomAbs_Line || !curve.Line().Direction().IsParallel(kZ, 1e-6))
            continue;
        const gp_Pnt point = curve.Value(curve.FirstParameter());
        if (std::hypot(point.X() - 0.5 * kInch, point.Y() - 0.5 * kInch) < 1e-6)
            fillet.Add(0.25 * kInch, TopoDS::Edge(edges(i)));
        else if (std::hypot(point.X() - 4 * kInch, point.Y() - 0.5 * kInch) < 1e-6)
            fillet.Add(0.125 * kInch, TopoDS::Edge(edges(i)));
    }
    shape = fillet.Shape();
    PartFile file(shape, "BRACKET", true);

    const int base = file.aspect(file.planes(kY, 0.5 * kInch));
    const Faces sloped = file.faces([](const BRepAdaptor_Surface& surface) {
        return surface.GetType() == GeomAbs_Plane &&
               std::abs(std::abs(surface.Plane().Axis().Direction().X()) - std::sqrt(0.75)) < 1e-6;
    });
    const int angle = file.angularLocation(base, file.aspect({sloped.front()}));
    file.value(angle, 120, 1, true);
    file.tolerance(angle, -0.5, 0.5, true);
    const int inner = file.size(
        "radius", file.aspect(file.cylinders(0.25 * kInch, {0.5 * kInch, 0.5 * kInch, 0}, 10)));
    file.values(inner,
                {file.item("nominal value", 0.25, 2, false), file.note("controlled radius")});
    file.tolerance(inner, -0.01, 0.01);
    file.value(file.size("radius", file.aspect(file.cylinders(
                                       0.125 * kInch, {3.875 * kInch, 0.375 * kInch, 0}, 1))),
               0.125, 3);
    Faces bores = file.cylinders(0.1405 * kInch, {2 * kInch, 0, 0.75 * kInch});
    const Faces second = file.cylinders(0.1405 * kInch, {3.25 * kInch, 0, 0.75 * kInch});
    const int apart = file.location("linear distance", file.aspect(bores), file.aspect(second));
    file.values(apart, {file.item("nominal value", 1.25, 3, false), file.note("theoretical")});
    bores.insert(bores.end(), second.begin(), second.end());
    const int holes = file.size("diameter", file.aspect(bores));
    file.value(holes, 0.281, 3);
    file.tolerance(holes, -0.003, 0.005);
    const Faces arc = file.edges([](const BRepAdaptor_Curve& curve) {
        return curve.GetType() == GeomAbs_Circle &&
               std::abs(curve.Circle().Radius() - 0.25 * kInch) < 1e-6;
    });
    file.value(file.size("curve length", file.aspect({arc.front()})), 0.262, 3);
    const int height = file.location("linear distance", file.aspect(file.planes(kY, 0)),
                                     file.aspect(file.planes(kY, 3 * kInch)));
    file.values(height, {file.item("nominal value", 3, 2, false), file.note("auxiliary")});
    const int depth = file.location("linear distance", file.aspect(file.planes(kZ, 0)),
                                    file.aspect(file.planes(kZ, 1.5 * kInch)));
    file.value(depth, 1.5, 2);
    file.tolerance(depth, -0.02, 0.02);
    file.write(path);
}

/// Millimetres: a pin with a taper of 10 degrees and an oblique end.
void makePin(const std::string& path) {
    const double half = 5 * 3.14159265358979 / 180;
    TopoDS_Shape shape =
        BRepPrimAPI_MakeCone(gp_Ax2({0, 0, 0}, kZ), 5, 5 + 40 * std::tan(half), 40).Shape();
    shape = fuse(shape, cylinder({0, 0, 40}, kZ, 5 + 40 * std::tan(half), 10));
    // The end is cut at 30 degrees to the axis' square.
    const double slope = 3.14159265358979 / 6;
    const gp_Ax2 oblique({0, 0, 45}, gp_Dir(std::sin(slope), 0, std::cos(slope)), kY);
    shape = cut(shape, cylinder(oblique.Location(), oblique.Direction(), 40, 40));
    PartFile file(shape, "PIN", false);

    const int taper = file.angularSize(file.aspect(file.ofType(GeomAbs_Cone)));
    file.value(taper, 10, 1, true);
    file.tolerance(taper, -0.1, 0.1, true);
    const Faces small = file.edges([](const BRepAdaptor_Curve& curve) {
        return curve.GetType() == GeomAbs_Circle && std::abs(curve.Circle().Radius() - 5) < 1e-6;
    });
    const int end = file.size("diameter", file.aspect(small));
    file.value(end, 10, 1);
    file.tolerance(end, -0.1, 0);
    const Faces cutFace = file.faces([](const BRepAdaptor_Surface& surface) {
        return surface.GetType() == GeomAbs_Plane &&
               std::abs(surface.Plane().Axis().Direction().X()) > 0.1;
    });
    const int foot = file.aspect(file.planes(kZ, 0));
    file.value(file.angularLocation(foot, file.aspect(cutFace)), 30, 0, true);
    const double reach = 45 + (5 + 40 * std::tan(half)) * std::tan(slope);
    file.value(file.location("linear distance", foot, file.aspect(cutFace)),
               std::round(reach * 100) / 100, 2);
    file.write(path);
}

/// Millimetres: a base with one pin that stands in two places.
void makeAssembly(const std::string& path) {
    const TopoDS_Shape base = cut(cut(box(80, 40, 15), cylinder({20, 20, 0}, kZ, 6, 15)),
                                  cylinder({60, 20, 0}, kZ, 6, 15));
    const TopoDS_Shape pin = fuse(cylinder({0, 0, 0}, kZ, 6, 30), cylinder({0, 0, 30}, kZ, 9, 5));
    TopoDS_Compound both;
    BRep_Builder builder;
    builder.MakeCompound(both);
    builder.Add(both, base);
    for (const double x : {20.0, 60.0}) {
        gp_Trsf place;
        place.SetTranslation(gp_Vec(x, 20, 0));
        builder.Add(both, pin.Located(TopLoc_Location(place)));
    }
    PartFile file(both, "ASSEMBLY", false);
    const int length = file.location("linear distance", file.aspect(file.planes(kX, 0)),
                                     file.aspect(file.planes(kX, 80)));
    file.value(length, 80, 1);
    file.value(file.size("diameter", file.aspect({file.cylinders(6, {20, 20, 0}).front()})), 12, 1);
    file.part = 1;
    const Faces heads = file.cylinders(9, {20, 20, 0});
    file.value(file.size("diameter", file.aspect({heads.front()})), 18, 1);
    file.value(file.location("linear distance", file.aspect({file.planes(kZ, 30).front()}),
                             file.aspect({file.planes(kZ, 35).front()})),
               5, 1);
    file.write(path);
}

/// No dimension at all.
void makeBlank(const std::string& path) { PartFile(box(30, 20, 10), "BLANK", false).write(path); }

/// A hole and an oblique one; every edge and face is a spline, as some programs write
/// them.
void makeSplines(const std::string& path) {
    TopoDS_Shape shape = cut(box(60, 40, 10), cylinder({20, 20, 0}, kZ, 8, 10));
    // An oblique cylinder leaves an ellipse.
    shape = cut(shape, cylinder({45, 5, -10}, {0, 1, 1}, 5, 60));
    PartFile(BRepBuilderAPI_NurbsConvert(shape, Standard_True).Shape(), "SPLINES", false)
        .write(path);
}

} // namespace

int main(int argc, char** argv) try {
    if (argc != 2) {
        std::cerr << "usage: make_step_parts DIRECTORY\n";
        return 2;
    }
    Message::DefaultMessenger()->RemovePrinters(STANDARD_TYPE(Message_PrinterOStream));
    const std::string folder = std::string(argv[1]) + "/";
    makePlate(folder + "plate.stp");
    makeShaft(folder + "shaft.stp");
    makeBracket(folder + "bracket.stp");
    makePin(folder + "pin.stp");
    makeAssembly(folder + "assembly.stp");
    makeBlank(folder + "blank.stp");
    makeSplines(folder + "splines.stp");
    return 0;
} catch (const std::exception& error) {
    std::fputs(error.what(), stderr);
    return 1;
} catch (...) {
    std::fputs("make_step_parts: OCCT has failed\n", stderr);
    return 1;
}
