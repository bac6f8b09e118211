#include "check/htmlPage.h"

namespace tessaly {

const std::string_view kReportStyle = R"page(
:root {
  color-scheme: light dark;
  --paper: #fbfaf7; --card: #ffffff; --ink: #22252b; --faint: #5c6270; --line: #d9d7d0;
  --ends: #a3192e; --loses: #8a5200; --worth: #1d5b8f; --fine: #22683a; --bar: #3d7ea6; --shade: #f0eee8;
}
@media (prefers-color-scheme: dark) {
  :root {
    --paper: #16181d; --card: #1f2229; --ink: #e7e6e2; --faint: #a4aab6; --line: #3a3f4a;
    --ends: #ff8b96; --loses: #f0b45c; --worth: #86bdf0; --fine: #83cf9b; --bar: #6fb1d8; --shade: #292d36;
  }
}
* { box-sizing: border-box; }
[hidden] { display: none !important; }
body { margin: 0; background: var(--paper); color: var(--ink);
       font: 16px/1.5 system-ui, -apple-system, "Segoe UI", "DejaVu Sans", sans-serif; }
main, header, footer { max-width: 68rem; margin: 0 auto; padding: 0 1.25rem; }
header { padding-top: 2.5rem; }
h1 { font-size: 1.9rem; line-height: 1.2; margin: 0 0 .25rem; letter-spacing: -.01em; }
h2 { font-size: 1.3rem; margin: 2.5rem 0 .75rem; }
p { margin: .5rem 0; }
.faint { color: var(--faint); }
.path, code { font-family: ui-monospace, "DejaVu Sans Mono", Consolas, monospace; font-size: .86em;
              overflow-wrap: anywhere; }
.verdict { border-left: .35rem solid var(--fine); background: var(--card); padding: .9rem 1.1rem;
           margin: 1.25rem 0; border-radius: .3rem; }
.verdict.ends { border-color: var(--ends); }
.verdict.loses { border-color: var(--loses); }
.verdict strong { font-size: 1.1rem; }
.tiles { display: grid; grid-template-columns: repeat(auto-fit, minmax(9rem, 1fr)); gap: .75rem; margin: 0; }
.tiles div { background: var(--card); border: 1px solid var(--line); border-radius: .5rem; padding: .7rem .9rem; }
.tiles dt { color: var(--faint); font-size: .86rem; }
.tiles dd { margin: 0; font-size: 1.55rem; font-weight: 600; font-variant-numeric: tabular-nums; }
.tiles .ends dd { color: var(--ends); } .tiles .loses dd { color: var(--loses); }
.tiles .worth dd { color: var(--worth); }
figure { margin: 0; background: var(--card); border: 1px solid var(--line); border-radius: .5rem; padding: 1rem;
         overflow-x: auto; }
figure svg { display: block; max-width: 100%; height: auto; min-width: 24rem; }
figure rect { fill: var(--bar); } figure text { fill: var(--ink); font-size: 12px; }
figure line { stroke: var(--line); }
.filter { display: flex; flex-wrap: wrap; gap: .5rem 1rem; align-items: center; background: var(--card);
          border: 1px solid var(--line); border-radius: .5rem; padding: .7rem .9rem; margin-bottom: .9rem; }
.filter input[type=search] { flex: 1 1 19rem; min-width: 8rem; font: inherit; padding: .35rem .6rem; color: inherit;
          background: var(--paper); border: 1px solid var(--faint); border-radius: .35rem; }
.filter label { white-space: nowrap; }
details.kind { background: var(--card); border: 1px solid var(--line); border-radius: .5rem; margin: .5rem 0; }
details.kind > summary { cursor: pointer; padding: .65rem .9rem; display: flex; gap: .75rem; align-items: baseline; }
details.kind > summary::before { content: "\25B8"; color: var(--faint); }
details.kind[open] > summary::before { content: "\25BE"; }
summary::-webkit-details-marker { display: none; }
summary h3 { font-size: 1rem; font-weight: 600; margin: 0; flex: 1; }
.badge { font-size: .8rem; font-weight: 600; border: 1px solid currentColor; border-radius: 1rem; padding: 0 .6rem;
         white-space: nowrap; }
.badge.ends { color: var(--ends); } .badge.loses { color: var(--loses); } .badge.worth { color: var(--worth); }
.number { font-variant-numeric: tabular-nums; min-width: 3rem; text-align: right; }
.inside { padding: 0 .9rem .9rem; border-top: 1px solid var(--line); }
.inside dl { display: grid; grid-template-columns: max-content 1fr; gap: .15rem .9rem; margin: .7rem 0; }
.inside dt { color: var(--faint); } .inside dd { margin: 0; }
ol.findings { list-style: none; margin: 0; padding: 0; }
ol.findings > li { border-top: 1px solid var(--line); padding: .55rem 0; }
blockquote { margin: .3rem 0 0; padding: .35rem .6rem; background: var(--shade); border-radius: .3rem; }
ul.tree, ul.tree ul { list-style: none; margin: 0; padding-left: 1.2rem; }
ul.tree { padding-left: 0; background: var(--card); border: 1px solid var(--line); border-radius: .5rem;
          padding: .8rem 1rem; }
ul.tree summary { cursor: pointer; }
ul.tree li { padding: .1rem 0; }
:focus-visible { outline: .18rem solid var(--worth); outline-offset: .12rem; border-radius: .2rem; }
.skip { position: absolute; left: -999rem; } .skip:focus { left: 1rem; top: 1rem; background: var(--card); padding: .5rem; }
footer { padding-top: 2rem; padding-bottom: 3rem; color: var(--faint); font-size: .9rem; }
@media (max-width: 36rem) { details.kind > summary { flex-wrap: wrap; } .inside dl { grid-template-columns: 1fr; } }
@media print {
  :root { color-scheme: light; --paper: #fff; --card: #fff; --ink: #000; --faint: #444; --line: #bbb;
          --ends: #8c0f22; --loses: #6d4100; --worth: #123f66; --fine: #114a25; --bar: #47789a; --shade: #f2f2f2; }
  body { font-size: 10pt; }
  .filter, .skip { display: none; }
  h2, summary { break-after: avoid; }
  .tiles div, ol.findings > li, figure { break-inside: avoid; }
}
)page";

// Filters what is shown, and unfolds everything for the paper. Without it the page shows all there is.
const std::string_view kReportScript = R"page(
"use strict";
(function () {
  const words = document.getElementById("words");
  const grades = Array.from(document.querySelectorAll("input[name=grade]"));
  const kinds = Array.from(document.querySelectorAll("details.kind"));
  const status = document.getElementById("status");
  document.getElementById("filter").hidden = false;

  function filter() {
    const wanted = words.value.trim().toLowerCase();
    const shownGrades = new Set(grades.filter((box) => box.checked).map((box) => box.value));
    let shown = 0;
    for (const kind of kinds) {
      let inKind = 0;
      const title = kind.querySelector("h3").textContent.toLowerCase();
      for (const item of kind.querySelectorAll("ol.findings > li")) {
        item.hidden = wanted !== "" && !title.includes(wanted) && !item.textContent.toLowerCase().includes(wanted);
        if (!item.hidden) ++inKind;
      }
      kind.hidden = !shownGrades.has(kind.dataset.grade) || inKind === 0;
      if (!kind.hidden) shown += inKind;
      if (wanted !== "" && !kind.hidden) kind.open = true;
    }
    status.textContent = shown === 1 ? "1 place shown" : shown + " places shown";
  }

  words.addEventListener("input", filter);
  for (const box of grades) box.addEventListener("change", filter);
  document.getElementById("unfold").addEventListener("click", () => kinds.forEach((kind) => { kind.open = true; }));
  document.getElementById("fold").addEventListener("click", () => kinds.forEach((kind) => { kind.open = false; }));
  let foldedBefore = [];
  window.addEventListener("beforeprint", () => {
    foldedBefore = Array.from(document.querySelectorAll("details:not([open])"));
    foldedBefore.forEach((part) => { part.open = true; });
  });
  window.addEventListener("afterprint", () => foldedBefore.forEach((part) => { part.open = false; }));
  filter();
})();
)page";

}  // namespace tessaly
