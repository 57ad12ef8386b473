#include "host/calls/description.h"

namespace host {
namespace {

/// Notes what a call asks for, and gives it as little as it can do with.
class Listener : public Arguments {
public:
    explicit Listener(std::vector<Member>& members) : members_(members) {}

    double number(const char* name) override {
        members_.push_back({name, Kind::Number});
        return 0;
    }
    int integer(const char* name, int otherwise) override {
        members_.push_back({name, Kind::Integer, kNotNeeded, otherwise});
        return otherwise;
    }
    bool boolean(const char* name, bool otherwise) override {
        members_.push_back({name, Kind::Boolean, kNotNeeded, otherwise ? 1 : 0});
        return otherwise;
    }
    std::uint32_t color(const char* name) override {
        members_.push_back({name, Kind::Color});
        return 0;
    }
    std::wstring text(const char* name) override {
        members_.push_back({name, Kind::Text, kNotNeeded});
        return {};
    }
    std::vector<PMITextLine> textLines(const char* name) override {
        members_.push_back({name, Kind::TextLines});
        return {};
    }
    Vec3 direction(const char* name) override {
        members_.push_back({name, Kind::Direction});
        return {};
    }
    std::optional<Vec3> point(const char* name, Need need) override {
        members_.push_back({name, Kind::Point, need});
        return std::nullopt;
    }
    void points(const char* name, std::span<Vec3> points) override {
        members_.push_back({name, Kind::Points, kAlways, 0, static_cast<unsigned>(points.size())});
    }
    std::optional<Shape> shape(const char* name, Shapes shapes, Need need) override {
        members_.push_back({name, Kind::EdgeShape, need, 0, shapes});
        return std::nullopt;
    }
    CallView view() override {
        members_.push_back({"view", Kind::View, kNotNeeded});
        return {};
    }

private:
    std::vector<Member>& members_;
};

} // namespace

Description describe(const Call& call) {
    Description description;
    description.call = call.name;
    description.changes = call.changes;
    Listener listener(description.members);
    Ank_PMI pmi;
    CallResult result;
    call.make(listener, pmi, result);
    description.hasStatus = result.status.has_value();
    description.hasLocate = result.locate.has_value();
    for (const HandedBack& other : result.others) {
        description.handedBack.push_back({other.name, other.value.index()});
    }
    description.measures = result.measured.quantity;
    return description;
}

} // namespace host
