#pragma once

// How the report looks: on a phone in the sun, on a wide screen, and on paper, where the colours of
// A and B must differ in grey as well.

namespace tiltpole::cli {

inline constexpr const char* kReportStyle = R"(
:root { color-scheme: light; }
* { box-sizing: border-box; }
body { margin: 0 auto; padding: 1rem; max-width: 76rem; background: #fff; color: #111;
  font: 16px/1.45 system-ui, "Segoe UI", Roboto, "DejaVu Sans", sans-serif; }
h1 { font-size: 1.5rem; margin: 0 0 .25rem; }
h2 { font-size: 1.2rem; margin: 2rem 0 .5rem; border-bottom: 2px solid #111; }
h4 { font-size: .95rem; margin: 0 0 .25rem; }
p { margin: .4rem 0; max-width: 46rem; }
.session { overflow-wrap: anywhere; color: #333; }
.verdict { margin: 1rem 0; padding: .75rem 1rem; border: 3px solid #111; border-radius: .4rem; }
.verdict strong { font-size: 1.6rem; display: block; }
.verdict p { margin: 0; }
.good { background: #d8f2dc; border-color: #14682a; }
.usable { background: #fdf1bf; border-color: #8a6a00; }
.poor { background: #ffdfc2; border-color: #a84b00; }
.unusable { background: #ffd6d3; border-color: #a3160c; }
.reasons { list-style: none; margin: 0; padding: 0; }
.reasons li { margin: .4rem 0; padding: .4rem .75rem; border-left: .5rem solid; }
.reasons b { text-transform: uppercase; font-size: .8rem; letter-spacing: .04em; margin-right: .5em; }
.grid { display: grid; gap: 1rem; grid-template-columns: repeat(auto-fill, minmax(min(100%, 15rem), 1fr)); }
.grid.broad { grid-template-columns: repeat(auto-fill, minmax(min(100%, 32rem), 1fr)); }
.grid > .grid { grid-template-columns: repeat(auto-fit, minmax(min(100%, 15rem), 1fr)); }
figure { margin: 0; min-width: 0; }
figure.wide { max-width: 40rem; }
figcaption { font-size: .85rem; color: #333; }
svg { display: block; width: 100%; height: auto; max-width: 40rem; }
figure.wide svg { max-width: none; }
svg text { font: 11px system-ui, "Segoe UI", Roboto, "DejaVu Sans", sans-serif; fill: #222; }
svg text.big { font-size: 26px; font-weight: bold; }
.frame { fill: none; stroke: #666; }
line.grid { stroke: #ddd; }
line.zero { stroke: #888; }
line.limit { stroke: #14682a; stroke-dasharray: 6 4; stroke-width: 1.5; }
.points { fill: none; stroke-width: 2.6; stroke-linecap: round; stroke: #555; stroke-opacity: .55; }
.a .points { stroke: #1455b4; }
.b .points { stroke: #c05600; }
.points.beyond, .a .points.beyond, .b .points.beyond { stroke: #c00; stroke-width: 5; stroke-opacity: 1; }
.points.few { stroke-width: 5; stroke-opacity: .8; }
.circle { fill: none; stroke: #111; stroke-width: 1; }
.centre { stroke: #111; stroke-width: 1.5; }
.missing { fill: #f6c6c2; }
.mean { fill: none; stroke: #111; stroke-width: 1.6; }
.curve { fill: none; stroke-width: 2.2; }
.curve.a { stroke: #1455b4; }
.curve.b { stroke: #c05600; stroke-dasharray: 7 3; }
.band { stroke: none; fill-opacity: .2; }
.band.a { fill: #1455b4; }
.band.b { fill: #c05600; }
.ring { fill: none; stroke: #2f8f4a; stroke-width: 16; }
.gap { fill: none; stroke: #fff; stroke-width: 18; }
.gap-mark { fill: none; stroke: #c22b1f; stroke-width: 16; stroke-dasharray: 2 6; }
.table { overflow-x: auto; margin: .75rem 0; }
table { border-collapse: collapse; font-size: .9rem; font-variant-numeric: tabular-nums; }
th, td { padding: .2rem .6rem; border-bottom: 1px solid #bbb; text-align: right; }
th:first-child { text-align: left; font-weight: normal; min-width: 9rem; }
thead th, thead th:first-child { font-weight: bold; border-bottom: 2px solid #111; vertical-align: bottom; }
footer { margin-top: 2rem; font-size: .85rem; color: #333; }
@media (max-width: 34rem) {
  table { font-size: .78rem; }
  th, td { padding: .15rem .3rem; }
  th:first-child { min-width: 6.5rem; }
}
@page { margin: 14mm; }
@media print {
  body { padding: 0; max-width: none; font-size: 10.5pt; }
  .grid, .grid.broad, .grid > .grid { grid-template-columns: repeat(2, 1fr); gap: .6rem; }
  .grid > .grid { grid-column: span 2; }
  figure, .table, .verdict, li { break-inside: avoid; }
  h2, h2 + p, h4 { break-after: avoid; }
  * { -webkit-print-color-adjust: exact; print-color-adjust: exact; }
}
)";

}  // namespace tiltpole::cli
