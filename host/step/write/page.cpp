#include "host/step/write/page.h"

#include "host/drawing/svg.h"
#include "host/step/text.h"

namespace host::step {
namespace {

constexpr const char* kStyle = R"css(
:root { color-scheme: light dark; --page: #f4f6f8; --card: #fff; --ink: #1a2430; --soft: #5b6876;
  --line: #d8dee5; --lit: #fff1c2; --noted: #8a5a00; --refused: #a3212b; }
@media (prefers-color-scheme: dark) { :root { --page: #12171d; --card: #1b222b; --ink: #e4eaf1;
  --soft: #9aa8b7; --line: #303a46; --lit: #4a3f14; --noted: #f0b95a; --refused: #ff8a8f; } }
* { box-sizing: border-box; }
body { margin: 0; background: var(--page); color: var(--ink); font: 16px/1.5 system-ui, sans-serif; }
header, main { max-width: 96rem; margin: 0 auto; padding: 0 1rem; }
header { padding-top: 1.5rem; }
h1 { margin: 0; font-size: 1.7rem; overflow-wrap: anywhere; }
h2 { margin: 0 0 .6rem; font-size: 1.05rem; }
p { margin: .3rem 0; color: var(--soft); }
section { margin: 1.2rem 0; padding: 1rem; border: 1px solid var(--line); border-radius: .6rem;
  background: var(--card); }
.view svg { display: block; width: 100%; height: auto; max-height: 85vh; border-radius: .3rem;
  background: #fff; }
.scroll { overflow-x: auto; }
table { width: 100%; border-collapse: collapse; font-size: .9rem; }
th, td { padding: .3rem .6rem; border-bottom: 1px solid var(--line); text-align: left;
  vertical-align: top; }
td.text { white-space: nowrap; font-variant-numeric: tabular-nums; }
tr.noted td.fate { color: var(--noted); }
tr.refused td.fate { color: var(--refused); }
tr.lit td { background: var(--lit); }
.view .annotation { cursor: pointer; }
.view .lit .curve, .view .lit .extension, .view .lit .special { stroke: #d1480c !important; }
.view .lit .arrow, .view .lit .text { fill: #d1480c !important; }
)css";

constexpr const char* kScript = R"js(
const light = (event, on) => {
  const named = event.target.closest('[data-name]');
  if (!named) return;
  for (const element of document.querySelectorAll('[data-name]'))
    if (element.dataset.name === named.dataset.name) element.classList.toggle('lit', on);
};
for (const [name, on] of [['mouseover', true], ['mouseout', false], ['focusin', true],
                          ['focusout', false]])
  document.addEventListener(name, event => light(event, on));
)js";

/// The pictures stand in one page: each one's rules hold for it alone.
std::string scoped(std::string svg, const std::string& id) {
    const std::size_t end = svg.find("</style>");
    const std::string rule = "\n    .";
    std::size_t at = svg.find("<style>");
    while (end != std::string::npos && (at = svg.find(rule, at)) < svg.find("</style>")) {
        at = svg.insert(at + rule.size() - 1, '#' + id + ' ').find('.', at) + 1;
    }
    return svg;
}

std::string cell(const std::string& text, const char* className = "") {
    const std::string attribute =
        *className == '\0' ? "" : std::string(" class=\"") + className + '"';
    return "<td" + attribute + '>' + xmlText(text) + "</td>";
}

std::string row(const Drawing& drawing, std::size_t i) {
    const Dimension& dimension = drawing.model.dimensions[i];
    const Outcome& outcome = drawing.outcomes[i];
    const std::string name = '#' + std::to_string(dimension.entity);
    std::string views;
    for (const std::string& view : viewsOf(drawing, i)) {
        views += (views.empty() ? "" : ", ") + view;
    }
    return std::string("<tr class=\"") + fateName(outcome.fate) + "\" data-name=\"" + name +
           "\" tabindex=\"0\">" + cell(name) + cell(oneLine(outcome.text), "text") +
           cell(dimension.unit) + cell(dimension.name) + cell(fateName(outcome.fate), "fate") +
           cell(views) + cell(outcome.reason) + "</tr>\n";
}

std::string table(const Drawing& drawing) {
    std::string html = "<div class=\"scroll\"><table>\n<thead><tr><th>Entity</th><th>Text</th>"
                       "<th>Unit</th><th>Kind</th><th>Fate</th><th>View</th><th>Why</th></tr>"
                       "</thead>\n<tbody>\n";
    for (std::size_t i = 0; i < drawing.outcomes.size(); ++i) {
        html += row(drawing, i);
    }
    return html + "</tbody>\n</table></div>\n";
}

std::string summary(const Drawing& drawing) {
    const auto paragraph = [](const std::string& text) { return "<p>" + xmlText(text) + "</p>\n"; };
    const auto count = [&](Fate fate) { return std::to_string(countOf(drawing, fate)); };
    const std::size_t all = drawing.outcomes.size();
    std::string html = paragraph(
        drawing.file + ". Values in " + unitOf(drawing.model) + ". " + std::to_string(all) +
        (all == 1 ? " dimension: " : " dimensions: ") + count(Fate::Drawn) + " drawn, " +
        count(Fate::Noted) + " noted, " + count(Fate::Refused) + " refused.");
    if (!drawing.model.tolerances.empty()) {
        html += paragraph(
            "Geometric tolerances, not drawn: " + countsText(drawing.model.tolerances) + '.');
    }
    if (!drawing.model.datums.empty()) {
        html += paragraph("Datums, not drawn: " + countsText(drawing.model.datums) + '.');
    }
    for (const std::string& remark : drawing.remarks) {
        html += paragraph(remark + '.');
    }
    return html;
}

} // namespace

std::string pageOf(const Drawing& drawing, const std::vector<DrawnView>& views) {
    const std::string title =
        xmlText(drawing.model.title.empty() ? drawing.file : drawing.model.title);
    std::string html = "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
                       "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
                       "<title>" +
                       title + "</title>\n<link rel=\"icon\" href=\"data:,\">\n<style>" + kStyle +
                       "</style>\n</head>\n<body>\n<header>\n<h1>" + title + "</h1>\n" +
                       summary(drawing) + "</header>\n<main>\n";
    for (const DrawnView& view : views) {
        const std::string id = "view-" + view.name;
        html += "<section class=\"view\" id=\"" + id + "\">\n<h2>" + xmlText(view.name) +
                "</h2>\n" + scoped(view.svg, id) + "</section>\n";
    }
    html += "<section>\n<h2>Dimensions</h2>\n" + table(drawing) + "</section>\n</main>\n";
    return html + "<script>" + kScript + "</script>\n</body>\n</html>\n";
}

} // namespace host::step
