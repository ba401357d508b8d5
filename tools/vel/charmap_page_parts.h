// The parts of a chart's page that are the same for every code set.
#pragma once

namespace vel_tool {

constexpr char page_style[] = R"css(
:root {
  color-scheme: light dark;
  --paper: #fbfaf7; --ink: #1d1d1b; --soft: #75736c; --rule: #dcd8ce; --none: #efece4;
  --accent: #9a3412; --lead: #fdf1e3; --raised: #ffffff; --shadow: 0 4px 18px rgb(0 0 0 / .16);
}
@media (prefers-color-scheme: dark) {
  :root {
    --paper: #171614; --ink: #ece8df; --soft: #98938a; --rule: #38352f; --none: #201e1b;
    --accent: #f2a36b; --lead: #2f241a; --raised: #24221e; --shadow: 0 4px 18px rgb(0 0 0 / .6);
  }
}
* { box-sizing: border-box; }
body {
  margin: 0 auto; padding: 2.5rem 1.25rem 4rem; max-width: 64rem;
  background: var(--paper); color: var(--ink); font: 1rem/1.5 system-ui, sans-serif;
}
h1 { margin: 0; font-size: 2.1rem; font-weight: 650; letter-spacing: -.015em; line-height: 1.15; }
header p { margin: .4rem 0 0; color: var(--soft); max-width: 46rem; }
nav { margin: 1.6rem 0 .9rem; display: flex; flex-wrap: wrap; gap: .3rem; }
nav a {
  padding: .1rem .5rem; border: 1px solid var(--rule); border-radius: .3rem;
  color: inherit; text-decoration: none; font: .82rem/1.6 ui-monospace, monospace;
}
nav a:hover, nav a:focus-visible { border-color: var(--accent); }
nav a[aria-current] { background: var(--accent); border-color: var(--accent); color: var(--paper); }
h2 { margin: 0 0 .7rem; font: 600 1rem/1.5 ui-monospace, monospace; }
h2 a { color: var(--accent); text-decoration: none; }
.scroll { overflow-x: auto; }
table { border-collapse: collapse; table-layout: fixed; }
th { padding: 0 .5rem; color: var(--soft); font: 500 .75rem/2 ui-monospace, monospace; }
td {
  width: 3.4rem; min-width: 3.4rem; height: 3.6rem; padding: 0; border: 1px solid var(--rule);
  text-align: center; vertical-align: middle; cursor: default;
}
td.none { background: var(--none); }
td.lead { background: var(--lead); color: var(--accent); font: .9rem ui-monospace, monospace; }
td.lead a { display: block; color: inherit; text-decoration: none; line-height: 3.5rem; }
td b { display: block; font-weight: 400; font-size: 1.45rem; line-height: 1.5; }
td b.short {
  font: 600 .68rem/2.2rem ui-monospace, monospace; letter-spacing: .04em; color: var(--soft);
}
td small { display: block; color: var(--soft); font: .6rem/1 ui-monospace, monospace; }
td:focus-visible, td:hover { outline: 2px solid var(--accent); outline-offset: -2px; }
#tip {
  position: absolute; max-width: 24rem; padding: .7rem .9rem; border-radius: .5rem;
  background: var(--raised); border: 1px solid var(--rule); box-shadow: var(--shadow);
  pointer-events: none; font-size: .85rem;
}
#tip dl { margin: 0; display: grid; grid-template-columns: auto 1fr; gap: .15rem .8rem; }
#tip dt { color: var(--soft); }
#tip dd { margin: 0; font-family: ui-monospace, monospace; overflow-wrap: anywhere; }
footer { margin-top: 1.4rem; color: var(--soft); font-size: .85rem; }
footer span { margin-right: 1.4rem; white-space: nowrap; }
footer i {
  display: inline-block; width: 1rem; height: 1rem; margin-right: .4rem; vertical-align: -.15rem;
  border: 1px solid var(--rule); background: var(--paper);
}
footer i.none { background: var(--none); }
footer i.lead { background: var(--lead); }
)css";

constexpr char page_script[] = R"js(
const byId = id => document.getElementById(id);
const hex = (n, digits) => n.toString(16).toUpperCase().padStart(digits, "0");
const pairs = text => text.replace(/..(?=.)/g, "$& ");
const combining = /^\p{M}/u, unseen = /^[\p{C}\p{Z}]/u;

function make(tag, className, ...content) {
  const node = document.createElement(tag);
  if (className) node.className = className;
  node.append(...content);
  return node;
}

function link(lead, text) {
  const node = make("a", "", text);
  node.href = "#" + lead;
  return node;
}

// A cell of the data: [byte], the first of longer characters, or [byte, code points, names].
function glyph(codes) {
  const short = codes.length === 1 ? chart.abbreviations[codes[0]] : undefined;
  if (short) return make("b", "short", short);
  const text = String.fromCodePoint(...codes);
  if (!codes.length || unseen.test(text)) return make("b", "short", "\u25A1");
  return make("b", "", combining.test(text) ? "\u25CC" + text : text);
}

const codePoints = codes => codes.map(code => "U+" + hex(code, 4)).join(" ");

function details(bytes, cell) {
  const list = make("dl");
  const row = (name, value) => value && list.append(make("dt", "", name), make("dd", "", value));
  row("bytes", pairs(bytes));
  if (!cell) row("", "no character");
  else if (cell.length === 1) row("", "longer characters begin so");
  else {
    row("code point", codePoints(cell[1]));
    row("names", cell[2]);
  }
  return list;
}

function showTip(td) {
  const tip = byId("tip");
  tip.replaceChildren(details(td.dataset.bytes, td.cell));
  tip.hidden = false;
  const at = td.getBoundingClientRect(), width = document.documentElement.clientWidth;
  tip.style.left = Math.max(8, Math.min(at.left, width - tip.offsetWidth - 8)) + scrollX + "px";
  tip.style.top = at.bottom + 8 + scrollY + "px";
}

function fill(td, lead, byte, cell) {
  const bytes = lead + hex(byte, 2);
  td.dataset.bytes = bytes;
  td.cell = cell;
  td.tabIndex = -1;
  if (!cell) td.className = "none";
  else if (cell.length === 1) {
    td.className = "lead";
    td.append(bytes in chart.grids ? link(bytes, hex(byte, 2) + "\u2026") : hex(byte, 2) + "\u2026");
  } else td.append(glyph(cell[1]), make("small", "", cell[1].map(code => hex(code, 4)).join("+")));
  for (const event of ["mouseenter", "focus"]) td.addEventListener(event, () => showTip(td));
  for (const event of ["mouseleave", "blur"])
    td.addEventListener(event, () => { byId("tip").hidden = true; });
}

function drawGrid(lead) {
  const cells = new Map(chart.grids[lead].map(cell => [cell[0], cell]));
  const table = byId("grid");
  table.replaceChildren();
  const head = table.createTHead().insertRow();
  head.append(make("th"));
  for (let low = 0; low < 16; ++low) head.append(make("th", "", "_" + hex(low, 1)));
  const body = table.createTBody();
  for (let high = 0; high < 16; ++high) {
    const row = Array.from({length: 16}, (_, low) => high * 16 + low);
    if (lead && !row.some(byte => cells.has(byte))) continue;
    const line = body.insertRow();
    line.append(make("th", "", hex(high, 1) + "_"));
    for (const byte of row) fill(line.insertCell(), lead, byte, cells.get(byte));
  }
  const first = table.querySelector("td");
  if (first) first.tabIndex = 0;
}

function drawNavigation(lead) {
  const siblings = chart.leads.filter(one => one.length === (lead.length || 2) &&
      one.startsWith(lead.slice(0, -2)));
  byId("leads").replaceChildren(...siblings.map(one => {
    const node = link(one, pairs(one));
    if (one === lead) node.setAttribute("aria-current", "true");
    return node;
  }));
  const path = byId("path");
  path.replaceChildren();
  for (let size = 0; size <= lead.length; size += 2) {
    const part = lead.slice(0, size), text = size ? part.slice(-2) : chart.start;
    if (size) path.append(" \u203A ");
    path.append(part !== lead && part in chart.grids ? link(part, text) : text);
  }
}

function show() {
  const asked = decodeURIComponent(location.hash.slice(1)).toUpperCase();
  const lead = asked in chart.grids ? asked : chart.leads[0];
  byId("tip").hidden = true;
  drawNavigation(lead);
  drawGrid(lead);
}

const steps = {ArrowLeft: [0, -1], ArrowRight: [0, 1], ArrowUp: [-1, 0], ArrowDown: [1, 0]};
byId("grid").addEventListener("keydown", event => {
  const td = event.target.closest("td"), step = steps[event.key];
  if (event.key === "Escape") byId("tip").hidden = true;
  if (event.key === "Enter" && td) td.querySelector("a")?.click();
  if (!td || !step) return;
  const row = td.parentNode.parentNode.rows[td.parentNode.sectionRowIndex + step[0]];
  const next = row?.cells[td.cellIndex + step[1]];
  if (next?.tagName !== "TD") return;
  event.preventDefault();
  td.tabIndex = -1;
  next.tabIndex = 0;
  next.focus();
});
addEventListener("hashchange", show);
show();
)js";

} // namespace vel_tool
