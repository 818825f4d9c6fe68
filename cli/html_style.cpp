#include "cli/html_style.h"

const char pageStyle[] = R"(:root {
    color-scheme: light dark;
    --ink: #1c1c1c; --faint: #595959; --ground: #ffffff; --box: #f4f4f4; --line: #c6c6c6;
    --link: #0b57a8; --fault: #a3170f; --square: #d4d4d4; --between: #f7f7f7;
}
@media (prefers-color-scheme: dark) {
    :root {
        --ink: #e6e6e6; --faint: #a6a6a6; --ground: #1a1a1a; --box: #252525; --line: #4a4a4a;
        --link: #8ab8f0; --fault: #ff9d94; --square: #5c5c5c; --between: #3c3c3c;
    }
}
* { box-sizing: border-box; }
body {
    margin: 0 auto; max-width: 76rem; padding: 1rem 1.25rem 3rem;
    background: var(--ground); color: var(--ink);
    font: 1rem/1.45 system-ui, "Segoe UI", "Liberation Sans", sans-serif;
}
h1, h2, h3, summary, figcaption, dd, li, p, bdi, .text { overflow-wrap: anywhere; }
.control {
    border: 1px solid var(--line); border-radius: .25em; padding: 0 .2em;
    color: var(--faint); font-size: .75em;
}
h1 { font-size: 1.7rem; }
h2 { font-size: 1.35rem; margin-top: 2.5rem; padding-top: .75rem; border-top: 2px solid var(--line); }
h3 { font-size: 1.1rem; margin: 1.75rem 0 .5rem; }
a { color: var(--link); }
.fault { color: var(--fault); }
.faint { color: var(--faint); }
dl { display: grid; grid-template-columns: max-content 1fr; gap: .2rem 1.25rem; margin: 0; }
dt { color: var(--faint); }
dd { margin: 0; }
summary { cursor: pointer; padding: .2rem 0; }
table { border-collapse: collapse; margin: .5rem 0; }
th, td { border: 1px solid var(--line); padding: .25rem .6rem; text-align: start; vertical-align: top; }
thead th, tbody th[scope="rowgroup"] { background: var(--box); }
td.number { text-align: end; font-variant-numeric: tabular-nums; white-space: nowrap; }
th[scope="row"] { min-width: 6rem; max-width: 24rem; font-weight: 600; }
.version th[scope="row"] { min-width: 11rem; }
.language { white-space: nowrap; }
td.text { white-space: pre-wrap; width: 100%; }
pre {
    margin: .25rem 0; padding: .6rem .75rem; overflow-x: auto;
    background: var(--box); border: 1px solid var(--line);
    font: .85rem/1.35 "Liberation Mono", Consolas, Menlo, monospace;
}
.pictures { display: flex; flex-wrap: wrap; gap: 1rem; align-items: flex-end; }
figure { margin: 0; max-width: 100%; min-width: 7rem; }
figure img {
    display: block; max-width: 100%; height: auto;
    background: repeating-conic-gradient(var(--square) 0% 25%, var(--between) 0% 50%) 0 0 / 16px 16px;
    border: 1px solid var(--line); box-sizing: content-box;
}
figcaption { margin-top: .35rem; font-size: .85rem; color: var(--faint); }
figcaption b { color: var(--ink); }
.sounds figure { margin: .75rem 0; }
audio { display: block; width: 24rem; max-width: 100%; }
@media print {
    :root {
        color-scheme: light;
        --ink: #000000; --faint: #333333; --ground: #ffffff; --box: #ffffff; --line: #777777;
        --link: #000000; --fault: #000000; --square: #d4d4d4; --between: #ffffff;
    }
    body { max-width: none; padding: 0; font-size: 10pt; }
    figure, tr, dl, summary, pre { break-inside: avoid; }
    h1, h2, h3, summary, thead { break-after: avoid; }
    figure img { max-height: 22cm; width: auto; print-color-adjust: exact; }
    audio { display: none; }
    pre { white-space: pre-wrap; }
    details::details-content { content-visibility: visible; height: auto; }
}
)";
