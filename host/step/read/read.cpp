#include "host/step/read/read.h"

#include <fstream>
#include <iterator>

#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <Message_PrinterOStream.hxx>
#include <OSD.hxx>
#include <STEPControl_Reader.hxx>
#include <Standard_ErrorHandler.hxx>
#include <Standard_Failure.hxx>
#include <StepBasic_Product.hxx>
#include <StepData_StepModel.hxx>
#include <TColStd_SequenceOfAsciiString.hxx>
#include <XSControl_TransferReader.hxx>
#include <XSControl_WorkSession.hxx>

#include "host/step/read/body.h"
#include "host/step/read/dimensions.h"
#include "host/step/read/hidden.h"
#include "host/step/read/smooth.h"
#include "host/step/read/values.h"

namespace host::step {
namespace {

std::vector<WrappedList> wrappedListsOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    return wrappedLists(text);
}

/// The first product's name.
std::string titleOf(const StepData_StepModel& entities) {
    for (int i = 1; i <= entities.NbEntities(); ++i) {
        const auto product = Handle(StepBasic_Product)::DownCast(entities.Value(i));
        if (product.IsNull()) {
            continue;
        }
        const std::string name = textOf(product->Name());
        return name.empty() ? textOf(product->Id()) : name;
    }
    return {};
}

std::string lengthUnitOf(STEPControl_Reader& reader) {
    TColStd_SequenceOfAsciiString lengths;
    TColStd_SequenceOfAsciiString angles;
    TColStd_SequenceOfAsciiString solidAngles;
    reader.FileUnits(lengths, angles, solidAngles);
    if (lengths.IsEmpty()) {
        return "mm";
    }
    TCollection_AsciiString name = lengths.First();
    name.LowerCase();
    return name.Search("inch") > 0 ? "in" : name.Search("milli") > 0 ? "mm" : name.ToCString();
}

/// OCCT reports to the standard output unless it is told otherwise.
void silence() {
    Message::DefaultMessenger()->RemovePrinters(STANDARD_TYPE(Message_PrinterOStream));
}

} // namespace

struct Part::Content {
    Model model;
    TopoDS_Shape shape;
};

Part::Part(const std::filesystem::path& file) : content_(std::make_unique<Content>()) {
    silence();
    OSD::SetSignal(Standard_False);
    try {
        OCC_CATCH_SIGNALS
        STEPControl_Reader reader;
        if (reader.ReadFile(file.c_str()) != IFSelect_RetDone) {
            throw StepError("is not a STEP file that can be read");
        }
        reader.TransferRoots();
        content_->shape = reader.OneShape();
        if (content_->shape.IsNull()) {
            throw StepError("holds no part that can be read");
        }
        markSmoothEdges(content_->shape);
        const Places places(content_->shape);
        const Source source{reader.StepModel(), reader.WS()->TransferReader()->TransientProcess(),
                            wrappedListsOf(file)};
        Model& model = content_->model;
        model.dimensions = readDimensions(source, places);
        model.title = titleOf(*source.entities);
        model.unit = lengthUnitOf(reader);
        model.tolerances = countTolerances(*source.entities);
        model.datums = countDatums(*source.entities);
        model.planes = places.planes();
        model.hull = hullOf(content_->shape);
        model.parts = places.parts();
    } catch (const Standard_Failure&) {
        throw StepError("cannot be read: its geometry is damaged");
    }
}

Part::~Part() = default;

const Model& Part::model() const { return content_->model; }

Picture Part::picture(const Vec3& right, const Vec3& up, bool fromMesh) const {
    try {
        OCC_CATCH_SIGNALS
        return fromMesh ? meshPicture(content_->shape, right, up)
                        : exactPicture(content_->shape, right, up);
    } catch (const Standard_Failure&) {
        throw StepError("its lines cannot be found");
    }
}

Body Part::body() const {
    try {
        OCC_CATCH_SIGNALS
        return bodyOf(content_->shape);
    } catch (const Standard_Failure&) {
        throw StepError("its faces cannot be shown");
    }
}

} // namespace host::step
