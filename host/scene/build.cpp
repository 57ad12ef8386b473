#include "host/scene/build.h"

#include <algorithm>

#include "host/finish/label.h"
#include "host/scene/arguments.h"
#include "host/scene/finish.h"
#include "host/system/spelling.h"

namespace host {
namespace {

/// What a viewer sets before it asks for an annotation.
void preset(Object& members, BuiltAnnotation& built) {
    if (const auto name = members.find("name")) {
        built.name = name->text();
    }
    if (const auto type = members.find("type")) {
        built.pmi.SetType(static_cast<AnkPMITypeEnum>(type->integer()));
    }
    if (const auto display = members.find("display")) {
        built.pmi.SetDisplay(display->boolean());
    }
    if (const auto parallel = members.find("screenParallel")) {
        built.pmi.SetParallelScreen(parallel->boolean());
    }
}

/// An annotation may belong to some views alone.
bool isInView(const Scene& scene, const Value& views) {
    bool found = scene.viewName().empty();
    for (const Value& view : views.items()) {
        scene.checkViewName(view);
        found = found || view.text() == scene.viewName();
    }
    return found;
}

void makeCall(const Scene& scene, Object& members, BuiltAnnotation& built) {
    const Value name = members.at("call");
    const Call* call = findCall(name.text());
    if (call == nullptr) {
        std::vector<std::string> names;
        for (const Call& known : calls()) {
            names.emplace_back(known.name);
        }
        name.fail("there is no call " + echoed(name.text()) + hint(name.text(), names));
    }
    SceneArguments arguments(scene, members);
    CallResult result;
    result.call = call->name;
    call->make(arguments, built.pmi, result);
    members.refuseOthers();
    built.calls.push_back(std::move(result));
}

/// The calls of an annotation: those of its list, or itself where it is one call.
std::vector<Object> callsOf(Object& members) {
    const auto calls = members.find("calls");
    if (!calls) {
        return {members};
    }
    const std::vector<Value> items = calls->items();
    return {items.begin(), items.end()};
}

/// What keeps a label from standing in place of what was measured, if anything does.
std::optional<std::string> misfitOf(const std::vector<std::wstring>& label, Quantity quantity) {
    for (const std::wstring& line : label) {
        if (const auto misfit = misfitOfLabel(line, quantity)) {
            return std::string(*misfit);
        }
    }
    return std::nullopt;
}

/// @param own the annotation's own `finish`, if it has one
void finishAnnotation(const Scene& scene, const std::optional<Value>& own, FinishOptions options,
                      BuiltAnnotation& built) {
    const CallResult* measuring = built.measuringCall();
    const CallResult call = measuring != nullptr ? *measuring : CallResult{};
    if (const auto misfit = misfitOf(options.label, call.measured.quantity)) {
        if (own && own->json().contains("label")) {
            Object(*own).at("label").fail(*misfit);
        }
        // A scene's label is for those of its annotations that can show it.
        options.label.clear();
    }
    finish(built.pmi, scene.view(), options, call);
    built.finished = !options.empty();
}

} // namespace

const CallResult* BuiltAnnotation::measuringCall() const {
    const auto found = std::find_if(calls.rbegin(), calls.rend(), [](const CallResult& call) {
        return call.measured.quantity != Quantity::None;
    });
    return found == calls.rend() ? nullptr : &*found;
}

void buildAnnotation(const Scene& scene, std::size_t index, BuiltAnnotation& built) {
    Object members(scene.annotation(index));
    preset(members, built);
    if (const auto views = members.find("views")) {
        built.inView = isInView(scene, *views);
    }
    const std::optional<Value> own = members.find("finish");
    const FinishOptions options = own ? readFinish(*own, scene.finish()) : scene.finish();
    std::vector<Object> calls = callsOf(members);
    if (members.find("calls")) {
        members.refuseOthers();
    }
    for (Object& call : calls) {
        makeCall(scene, call, built);
    }
    finishAnnotation(scene, own, options, built);
}

std::vector<std::string> callNames(const Scene& scene) {
    std::vector<std::string> names;
    for (std::size_t i = 0; i < scene.annotationCount(); ++i) {
        Object members(scene.annotation(i));
        for (Object& call : callsOf(members)) {
            const std::string& name = call.at("call").text();
            if (std::find(names.begin(), names.end(), name) == names.end()) {
                names.push_back(name);
            }
        }
    }
    return names;
}

} // namespace host
