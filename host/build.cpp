#include "build.h"

#include <algorithm>

#include "calls.h"

namespace host {
namespace {

/// What a viewer sets before it asks for an annotation.
void preset(Object& members, BuiltAnnotation& built) {
    if (const auto name = members.find("name"))
        built.name = name->text();
    if (const auto type = members.find("type"))
        built.pmi.SetType(static_cast<AnkPMITypeEnum>(type->integer()));
    if (const auto display = members.find("display"))
        built.pmi.SetDisplay(display->boolean());
    if (const auto parallel = members.find("screenParallel"))
        built.pmi.SetParallelScreen(parallel->boolean());
}

void makeCall(const Scene& scene, Object& members, BuiltAnnotation& built) {
    const Value name = members.at("call");
    const CallFunction* call = findCall(name.text());
    if (call == nullptr)
        name.fail("there is no such call");
    Arguments arguments(scene, members);
    HandedBack result;
    result.call = name.text();
    (*call)(arguments, built, result);
    members.refuseOthers();
    built.calls.push_back(std::move(result));
}

/// The calls of an annotation: itself, where it is one call, or its list of calls.
std::vector<Value> callsOf(Object& members) {
    if (const auto calls = members.find("calls"))
        return calls->items();
    return {members.value()};
}

} // namespace

void buildAnnotation(const Scene& scene, std::size_t index, BuiltAnnotation& built) {
    Object members(scene.annotation(index));
    preset(members, built);
    if (const auto calls = members.find("calls")) {
        members.refuseOthers();
        for (const Value& call : calls->items()) {
            Object callMembers(call);
            makeCall(scene, callMembers, built);
        }
    } else {
        makeCall(scene, members, built);
    }
}

std::vector<std::string> callNames(const Scene& scene) {
    std::vector<std::string> names;
    for (std::size_t i = 0; i < scene.annotationCount(); ++i) {
        Object members(scene.annotation(i));
        for (const Value& call : callsOf(members)) {
            const std::string& name = Object(call).at("call").text();
            if (std::find(names.begin(), names.end(), name) == names.end())
                names.push_back(name);
        }
    }
    return names;
}

} // namespace host
