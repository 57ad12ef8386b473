#include "web/binding/describe.h"

#include <string>
#include <string_view>

#include "host/calls/description.h"

namespace web {
namespace {

void addName(Words& words, const char* name) {
    const std::string_view ascii(name == nullptr ? "" : name);
    words.add(std::wstring(ascii.begin(), ascii.end()));
}

void add(Words& words, const host::Member& member) {
    addName(words, member.name);
    words.add(static_cast<int>(member.kind));
    words.add(member.need.isNeeded);
    addName(words, member.need.with);
    words.add(member.otherwise);
    words.add(member.count);
}

void add(Words& words, const host::HandedBackMember& member) {
    addName(words, member.name);
    words.addCount(member.type);
}

template <class T> void addList(Words& words, const std::vector<T>& items) {
    words.addCount(items.size());
    for (const T& item : items) {
        add(words, item);
    }
}

void add(Words& words, const host::Description& call) {
    addName(words, call.call);
    words.add(call.changes);
    words.add(call.hasStatus);
    words.add(call.hasLocate);
    words.add(static_cast<int>(call.measures));
    addList(words, call.members);
    addList(words, call.handedBack);
}

} // namespace

void describeCalls(Words& words) {
    words.addCount(host::calls().size());
    for (const host::Call& call : host::calls()) {
        add(words, host::describe(call));
    }
}

} // namespace web
