#include "host/output/gallery.h"

#include <cctype>
#include <map>

#include "host/drawing/draw.h"
#include "host/drawing/svg.h"
#include "host/scene/build.h"
#include "host/scene/scene.h"

namespace host {
namespace {

constexpr const char* kStyle = R"css(
:root { color-scheme: light dark; --page: #f4f6f8; --card: #fff; --ink: #1a2430; --soft: #5b6876;
  --line: #d8dee5; --accent: #0b3d78; --code: #eef2f6; }
@media (prefers-color-scheme: dark) { :root { --page: #12171d; --card: #1b222b; --ink: #e4eaf1;
  --soft: #9aa8b7; --line: #303a46; --accent: #86b6f2; --code: #141a21; } }
* { box-sizing: border-box; }
body { margin: 0; background: var(--page); color: var(--ink);
  font: 16px/1.5 system-ui, sans-serif; }
header, main { max-width: 84rem; margin: 0 auto; padding: 0 1rem; }
header { padding-top: 2rem; }
h1 { margin: 0; font-size: 1.9rem; }
h2 { margin: 2.5rem 0 1rem; font-size: 1.3rem; }
h3 { margin: 0; font-size: 1.05rem; overflow-wrap: anywhere; }
h3 small { color: var(--soft); font-weight: normal; white-space: nowrap; }
p { margin: .3rem 0; color: var(--soft); }
a { color: var(--accent); }
nav { display: flex; flex-wrap: wrap; gap: .5rem; margin: 1rem 0; }
nav a { padding: .2rem .8rem; border: 1px solid var(--line); border-radius: 1rem;
  background: var(--card); text-decoration: none; }
.grid { display: grid; gap: 1.2rem;
  grid-template-columns: repeat(auto-fill, minmax(min(100%, 34rem), 1fr)); }
article { min-width: 0; padding: 1rem; border: 1px solid var(--line); border-radius: .6rem;
  background: var(--card); }
.picture { display: block; margin: .8rem 0; border-radius: .3rem; background: #fff; }
.picture img { display: block; width: 100%; height: auto; max-height: 70vh; }
code { padding: .1em .35em; border-radius: .3em; background: var(--code);
  font: .85em ui-monospace, monospace; overflow-wrap: anywhere; }
.files, .licence { font-size: .85rem; }
summary { cursor: pointer; color: var(--accent); }
pre { max-height: 24rem; margin: .6rem 0 0; padding: .8rem; border-radius: .4rem; overflow: auto;
  background: var(--code); font: .78rem/1.45 ui-monospace, monospace; }
pre code { padding: 0; background: none; font: inherit; overflow-wrap: normal; }
footer { padding: 3rem 1rem 2rem; text-align: center; color: var(--soft); font-size: .85rem; }
)css";

/// A file's name as an address: everything but plain letters is escaped.
std::string address(const std::string& name) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::string result;
    for (const char c : name) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80 && (std::isalnum(byte) != 0 || c == '-' || c == '_' || c == '.')) {
            result += c;
        } else {
            result += '%';
            result += kDigits[byte / 16];
            result += kDigits[byte % 16];
        }
    }
    return result;
}

std::string shownTitle(const GalleryPicture& picture) {
    return picture.title.empty() ? picture.name : picture.title;
}

std::string callList(const std::vector<std::string>& calls) {
    std::string list;
    for (const std::string& call : calls) {
        list += (list.empty() ? "<code>" : " <code>") + xmlText(call) + "</code>";
    }
    return list;
}

std::string files(const std::string& file, bool withPng) {
    std::string links = "<a href=\"" + file + ".svg\">SVG</a>";
    if (withPng) {
        links += " <a href=\"" + file + ".png\">PNG</a>";
    }
    return links;
}

std::string card(const GalleryPicture& picture, bool withPng) {
    const std::string file = address(picture.name);
    const std::string title = xmlText(shownTitle(picture));
    std::string html = "<article id=\"scene-" + file + "\">\n";
    html += "<h3>" + title + " <small>" + xmlText(picture.name) + "</small></h3>\n";
    html += "<p>" + callList(picture.calls) + "</p>\n";
    html += "<a class=\"picture\" href=\"" + file + ".svg\"><img src=\"" + file +
            ".svg\" alt=\"Drawing: " + title + "\"></a>\n";
    html += "<details>\n<summary>The scene</summary>\n<pre><code>" + xmlText(picture.sceneText) +
            "</code></pre>\n</details>\n";
    html += "<p class=\"files\">" + files(file, withPng) + "</p>\n";
    if (!picture.licence.empty()) {
        html += "<p class=\"licence\">Geometry: " + xmlText(picture.licence) + "</p>\n";
    }
    return html + "</article>\n";
}

using Groups = std::map<std::string, std::vector<const GalleryPicture*>>;

Groups grouped(const std::vector<GalleryPicture>& pictures) {
    Groups groups;
    for (const GalleryPicture& picture : pictures) {
        groups[picture.kind.empty() ? "Other" : picture.kind].push_back(&picture);
    }
    return groups;
}

std::string sectionId(std::size_t index) { return "kind-" + std::to_string(index + 1); }

std::string navigation(const Groups& groups) {
    std::string html = "<nav aria-label=\"Kinds\">\n";
    std::size_t index = 0;
    for (const auto& group : groups) {
        html += "<a href=\"#" + sectionId(index++) + "\">" + xmlText(group.first) + "</a>\n";
    }
    return html + "</nav>\n";
}

std::string sections(const Groups& groups, bool withPng) {
    std::string html;
    std::size_t index = 0;
    for (const auto& [kind, pictures] : groups) {
        html += "<section id=\"" + sectionId(index++) + "\">\n<h2>" + xmlText(kind) + "</h2>\n";
        html += "<div class=\"grid\">\n";
        for (const GalleryPicture* picture : pictures) {
            html += card(*picture, withPng);
        }
        html += "</div>\n</section>\n";
    }
    return html;
}

} // namespace

GalleryPicture makePicture(const std::string& name, std::string sceneText, const Warning& warning) {
    const Scene scene(sceneText);
    GalleryPicture picture;
    picture.name = name;
    picture.title = scene.title();
    picture.kind = scene.kind();
    picture.licence = scene.licence();
    picture.calls = callNames(scene);
    picture.svg = drawScene(scene, {}, warning);
    picture.sceneText = std::move(sceneText);
    return picture;
}

std::string galleryPage(const std::vector<GalleryPicture>& pictures, bool withPng) {
    const Groups groups = grouped(pictures);
    std::string html = "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
                       "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
                       "<title>Dorvale gallery</title>\n<link rel=\"icon\" href=\"data:,\">\n";
    html += std::string("<style>") + kStyle + "</style>\n</head>\n<body>\n";
    html += "<header>\n<h1>Dorvale gallery</h1>\n<p>" + std::to_string(pictures.size()) +
            (pictures.size() == 1 ? " scene" : " scenes") +
            ", each with the calls that made it. Measures are millimetres.</p>\n";
    html += navigation(groups) + "</header>\n<main>\n" + sections(groups, withPng);
    return html + "</main>\n<footer>Drawn by pmi-host.</footer>\n</body>\n</html>\n";
}

} // namespace host
