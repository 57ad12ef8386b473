#include "web/binding/describe.h"

#include <string_view>

#include "host/calls/description.h"

namespace web {
namespace {

/// JSON of plain names and numbers: nothing in it needs to be escaped.
class Json {
public:
    void open(char bracket) {
        separate();
        text_ += static_cast<wchar_t>(bracket);
        first_ = true;
    }
    void close(char bracket) {
        text_ += static_cast<wchar_t>(bracket);
        first_ = false;
    }
    void add(std::string_view name) {
        separate();
        text_ += L'"';
        text_.append(name.begin(), name.end());
        text_ += L'"';
    }
    void add(int number) {
        separate();
        const std::string digits = std::to_string(number);
        text_.append(digits.begin(), digits.end());
    }
    void addKey(std::string_view name) {
        add(name);
        text_ += L':';
        first_ = true;
    }
    template <class T> void add(std::string_view name, const T& value) {
        addKey(name);
        add(value);
    }
    std::wstring take() { return std::move(text_); }

private:
    void separate() {
        if (!first_) {
            text_ += L',';
        }
        first_ = false;
    }

    std::wstring text_;
    bool first_ = true;
};

void add(Json& json, const host::Member& member) {
    json.open('{');
    json.add("name", member.name);
    json.add("kind", static_cast<int>(member.kind));
    json.add("isNeeded", member.need.isNeeded ? 1 : 0);
    json.add("with", member.need.with == nullptr ? "" : member.need.with);
    json.add("otherwise", member.otherwise);
    json.add("count", static_cast<int>(member.count));
    json.close('}');
}

void add(Json& json, const host::HandedBackMember& member) {
    json.open('{');
    json.add("name", member.name);
    json.add("type", static_cast<int>(member.type));
    json.close('}');
}

template <class T> void addList(Json& json, std::string_view name, const std::vector<T>& items) {
    json.addKey(name);
    json.open('[');
    for (const T& item : items) {
        add(json, item);
    }
    json.close(']');
}

void add(Json& json, const host::Description& call) {
    json.open('{');
    json.add("call", call.call);
    json.add("changes", call.changes ? 1 : 0);
    json.add("hasStatus", call.hasStatus ? 1 : 0);
    json.add("hasLocate", call.hasLocate ? 1 : 0);
    json.add("measures", static_cast<int>(call.measures));
    addList(json, "members", call.members);
    addList(json, "handedBack", call.handedBack);
    json.close('}');
}

} // namespace

std::wstring describeCalls() {
    Json json;
    json.open('[');
    for (const host::Call& call : host::calls()) {
        add(json, host::describe(call));
    }
    json.close(']');
    return json.take();
}

} // namespace web
