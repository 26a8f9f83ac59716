#include "tools/zanto-song/TakePage.h"

#include <algorithm>
#include <cmath>
#include <filesystem>

#include "tools/common/Text.h"
#include "tools/zanto-song/TakePicture.h"

namespace {

// Each colour has a contrast of at least 7 to its background.
constexpr const char* head = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<meta http-equiv="Content-Security-Policy"
 content="default-src 'none'; style-src 'unsafe-inline'; script-src 'unsafe-inline'; media-src data:">
<style>
:root { color-scheme: light; }
body { margin: 0 auto; max-width: 60rem; padding: 0 1rem 3rem; background: #fff; color: #1a1a1a;
  font: 1rem/1.5 'Bitstream Vera Sans', 'DejaVu Sans', Verdana, sans-serif; }
h1, h2, h3 { line-height: 1.2; }
h2 { margin-top: 3rem; border-top: 2px solid #1a1a1a; padding-top: 1rem; overflow-wrap: anywhere; }
h3 { font-size: 1rem; margin-bottom: 0; }
ol { margin-top: 0.3rem; }
a { color: #00457d; }
:focus-visible { outline: 3px solid #00457d; outline-offset: 2px; }
.wide { overflow-x: auto; }
table { border-collapse: collapse; min-width: 100%; }
th, td { padding: 0.4rem 0.8rem; border-bottom: 1px solid #767676; text-align: right; white-space: nowrap; }
th:first-child { text-align: left; }
thead th { padding: 0; border-bottom: 2px solid #1a1a1a; }
th button { font: inherit; font-weight: bold; color: inherit; background: none; border: 0; width: 100%;
  padding: 0.5rem 0.8rem; text-align: inherit; cursor: pointer; }
th button::after { content: " \2195"; }
th[aria-sort=ascending] button::after { content: " \2191"; }
th[aria-sort=descending] button::after { content: " \2193"; }
.gain { display: inline-block; min-width: 4em; font-weight: bold; }
.strips svg { display: block; width: 100%; min-width: 40rem; height: auto; break-inside: avoid; }
audio { display: block; width: 100%; margin: 1rem 0; }
@media print {
  body { max-width: none; padding: 0; }
  th button::after, audio { display: none; }
  h2 { break-after: avoid; }
  tr, li { break-inside: avoid; }
  .wide { overflow: visible; }
  .strips svg { min-width: 0; }
}
</style>
)";

// A first click gives the best first, a second one turns the order round. What has no value stays last.
constexpr const char* script = R"(<script>
"use strict";
const table = document.querySelector("table");
for (const head of table.tHead.rows[0].cells) {
  head.firstElementChild.addEventListener("click", () => {
    const turned = { ascending: "descending", descending: "ascending", none: head.dataset.first };
    const order = turned[head.getAttribute("aria-sort")];
    for (const other of head.parentElement.cells) {
      other.setAttribute("aria-sort", other === head ? order : "none");
    }
    const valueOf = row => row.cells[head.cellIndex].dataset.value;
    const rows = [...table.tBodies[0].rows].sort((a, b) => {
      const [one, two] = [valueOf(a), valueOf(b)];
      if (one === "" || two === "") {
        return (one === "") - (two === "");
      }
      const difference = head.cellIndex === 0 ? one.localeCompare(two, "en", { numeric: true }) : one - two;
      return order === "ascending" ? difference : -difference;
    });
    table.tBodies[0].append(...rows);
  });
}
</script>
)";

std::string shortName(const std::string& path) {
    return std::filesystem::u8path(path).filename().string();
}

std::string column(const std::string& name, const std::string& first) {
    return "<th scope=\"col\" aria-sort=\"none\" data-first=\"" + first + "\"><button type=\"button\">" +
           name + "</button></th>";
}

std::string cell(const std::string& value, const std::string& text) {
    return "<td data-value=\"" + value + "\">" + text + "</td>";
}

std::string milliseconds(double seconds) {
    return std::to_string(std::lround(1000.0 * std::abs(seconds))) + " ms";
}

std::string timingCell(const Take& take) {
    const std::optional<Timing> timing = timingOf(take);
    if (!timing) {
        return cell("", "not heard");
    }
    return cell(fixed(std::abs(timing->lateSeconds), 4),
                milliseconds(timing->lateSeconds) + (timing->lateSeconds < 0.0 ? " early" : " late") +
                    ", ± " + milliseconds(timing->spreadSeconds));
}

std::string rowOf(const NamedTake& named, std::size_t number) {
    const Take& take = named.take;
    const std::size_t hits = awardedIn(take);
    const std::string name = escapedXml(shortName(named.recording));
    return "<tr><th scope=\"row\" data-value=\"" + name + "\"><a href=\"#take-" + std::to_string(number) +
           "\">" + name + "</a></th>" + cell(fixed(take.score, 0), fixed(take.score, 0)) +
           cell(std::to_string(hits), std::to_string(hits) + " of " + std::to_string(take.notes.size())) +
           cell(std::to_string(take.penalties.size()), std::to_string(take.penalties.size())) +
           timingCell(take) + "</tr>\n";
}

std::string adviceOf(const ShownTake& shown) {
    std::string text = "<h3>What would have earned most, each by itself</h3>\n";
    if (shown.advice.empty()) {
        return text + "<p>Nothing: no single change would have earned more.</p>\n";
    }
    text += "<ol>\n";
    for (const Advice& advice : shown.advice) {
        text += "<li><span class=\"gain\">+" + fixed(advice.points, 0) + "</span> " +
                escapedXml(advice.what) + "</li>\n";
    }
    return text + "</ol>\n";
}

std::string pictures(const std::vector<Page>& strips, const std::string& label) {
    std::string text = "<div class=\"wide strips\" tabindex=\"0\" role=\"region\" aria-label=\"" +
                       escapedXml(label) + "\">\n";
    for (const Page& strip : strips) {
        text += toSvg(strip);
    }
    return text + "</div>\n";
}

std::string sectionOf(const std::string& song, const ShownTake& shown, std::size_t number) {
    const std::string name = escapedXml(shortName(shown.named.recording));
    std::vector<Page> strips = drawTake(song, shown.named);
    strips.erase(strips.begin());  // the heading, which stands here as text
    std::string text = "<section id=\"take-" + std::to_string(number) + "\">\n<h2>" + name + "</h2>\n<p>" +
                       summaryOf(shown.named.take) + "</p>\n" + adviceOf(shown);
    if (!shown.sound.empty()) {
        text += "<audio controls preload=\"none\" aria-label=\"" + name + "\" src=\"" + shown.sound +
                "\"></audio>\n";
    }
    return text + pictures(strips, "Picture of " + shortName(shown.named.recording)) + "</section>\n";
}

}  // namespace

std::string htmlReport(const std::string& song, const std::vector<ShownTake>& takes) {
    const std::string title = escapedXml(song);
    std::string text = std::string(head) + "<title>" + title + "</title>\n</head>\n<body>\n<main>\n<h1>" +
                       title + "</h1>\n<p>" + counted(takes.size(), "take") +
                       ". Choose a column to sort by it. Timing is how far after its slot the game heard a "
                       "note, in the middle, and how far notes lie from that.</p>\n"
                       "<div class=\"wide\" tabindex=\"0\" role=\"region\" aria-label=\"Takes\">\n"
                       "<table>\n<thead><tr>" +
                       column("Name", "ascending") + column("Score", "descending") +
                       column("Hits", "descending") + column("Penalties", "ascending") +
                       column("Timing", "ascending") + "</tr></thead>\n<tbody>\n";
    for (std::size_t index = 0; index < takes.size(); ++index) {
        text += rowOf(takes[index].named, index + 1);
    }
    text += "</tbody>\n</table>\n</div>\n";
    for (std::size_t index = 0; index < takes.size(); ++index) {
        text += sectionOf(song, takes[index], index + 1);
    }
    return text + "<section>\n<h2>Legend</h2>\n" + pictures({takeLegend()}, "Legend") +
           "</section>\n</main>\n" + script + "</body>\n</html>\n";
}
