"""The pictures of the hearing page, as SVG. They have no fixed background and suit light and dark pages.

Colours are told apart by colour-blind eyes, and none carries a meaning alone: cells show their numbers, lines differ
in marks and dashes.
"""

from xml.sax.saxutils import escape

STYLE = """<style>
text { font: 12px sans-serif; fill: #1f2328; }
.small { font-size: 11px; } .end { text-anchor: end; } .mid { text-anchor: middle; }
.axis { stroke: #59636e; } .grid { stroke: #59636e; stroke-opacity: 0.3; }
.a { stroke: #0072b2; fill: #0072b2; } .b { stroke: #d55e00; fill: #d55e00; } .c { stroke: #009e73; fill: #009e73; }
.line { fill: none; stroke-width: 2; }
@media (prefers-color-scheme: dark) {
text { fill: #e6edf3; } .axis, .grid { stroke: #9198a1; }
.a { stroke: #56b4e9; fill: #56b4e9; } .b { stroke: #e69f00; fill: #e69f00; } .c { stroke: #2ec4a0; fill: #2ec4a0; }
}
text.on-light { fill: #1f2328; } text.on-dark { fill: #ffffff; }
</style>"""

# From no fault to many: light to dark, one hue.
SHADES = ["#f7fbff", "#deebf7", "#c6dbef", "#9ecae1", "#6baed6", "#4292c6", "#2171b5", "#08519c", "#08306b"]


def svg(width, height, title, description, body):
    return "\n".join([
        f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width} {height}" width="{width}" height="{height}" '
        'role="img" aria-labelledby="title description">',
        f'<title id="title">{escape(title)}</title>', f'<desc id="description">{escape(description)}</desc>',
        STYLE, *body, "</svg>", ""])


def text(x, y, content, style=""):
    return f'<text x="{x:g}" y="{y:g}" class="{style}">{escape(content)}</text>'


def line(x1, y1, x2, y2, style):
    return f'<line x1="{x1:g}" y1="{y1:g}" x2="{x2:g}" y2="{y2:g}" class="{style}"/>'


def mark(x, y, style):
    """A circle, a square or a triangle, one for each of the styles a, b and c."""
    if style == "a":
        return f'<circle cx="{x:g}" cy="{y:g}" r="4" class="a"/>'
    if style == "b":
        return f'<rect x="{x - 4:g}" y="{y - 4:g}" width="8" height="8" class="b"/>'
    return f'<path d="M{x - 5:g} {y + 4:g}h10l-5 -9z" class="c"/>'


def heat_map(title, description, panels, players, octaves):
    """`panels`: (heading, {(player, octave): (right, wrong)}), in percent, for each ear."""
    left, wide, high, top = 132, 34, 18, 50
    group_wide = len(octaves) * wide + 12
    panel = 2 * group_wide + 16
    body, cells, numbers = [], [""] * len(SHADES), {"on-light": "", "on-dark": ""}
    for number, (heading, values) in enumerate(panels):
        start = left + number * panel
        body.append(text(start, 14, heading))
        for group, kind in enumerate(("right", "wrong")):
            first = start + group * group_wide
            body.append(text(first + len(octaves) * wide / 2, 30, kind + " %", "small mid"))
            for column, octave in enumerate(octaves):
                x = first + column * wide
                body.append(text(x + wide / 2, top - 6, f"C{octave}", "small mid"))
                for row, player in enumerate(players):
                    if (player, octave) not in values:
                        continue
                    shown = values[player, octave][group]
                    fault = 100 - shown if kind == "right" else shown
                    shade = min(len(SHADES) - 1, int(fault / 80 * len(SHADES)))
                    y = top + row * high
                    cells[shade] += f"M{x:g},{y}h{wide - 2}v{high - 2}h-{wide - 2}z"
                    numbers["on-dark" if shade > 4 else "on-light"] += (
                        f'<tspan x="{x + wide / 2:g}" y="{y + 12}">{shown:.0f}</tspan>')
    body += [f'<path d="{path}" fill="{SHADES[shade]}"/>' for shade, path in enumerate(cells) if path]
    body += [f'<text class="small mid {style}">{spans}</text>' for style, spans in numbers.items() if spans]
    body += [text(left - 8, top + row * high + 12, player, "small end") for row, player in enumerate(players)]
    return svg(left + len(panels) * panel, top + len(players) * high + 4, title, description, body)


def line_chart(title, description, lines, x_label, y_label, y_range, marked_x):
    """`lines`: (name, style, dashed, [(x, y), ...]), x rising from left to right."""
    left, top, wide, high = 56, 16, 460, 280
    xs = sorted({x for *_, points in lines for x, _ in points})
    low, top_value = y_range

    def place(x, y):
        return left + (x - xs[0]) / (xs[-1] - xs[0]) * wide, top + (top_value - y) / (top_value - low) * high

    body = []
    for value in range(low, top_value + 1, 20):
        y = place(xs[0], value)[1]
        body += [line(left, y, left + wide, y, "grid"), text(left - 8, y + 4, str(value), "small end")]
    for x in xs:
        body.append(text(place(x, low)[0], top + high + 16, f"{x:g}".replace("-", "\u2212"), "small mid"))
    beat = place(marked_x, low)[0]
    body += [line(beat, top, beat, top + high, "axis"),
             text(left + wide / 2, top + high + 36, x_label, "mid"),
             f'<text transform="translate(14 {top + high / 2:g}) rotate(-90)" class="mid">{escape(y_label)}</text>']
    for number, (name, style, dashed, points) in enumerate(lines):
        places = [place(x, y) for x, y in points]
        joined = " ".join(f"{x:g},{y:.1f}" for x, y in places)
        dash = ' stroke-dasharray="6 4"' if dashed else ""
        body.append(f'<polyline points="{joined}" class="line {style}" style="fill:none"{dash}/>')
        body += [mark(x, round(y, 1), style) for x, y in places]
        key = top + 12 + number * 20
        body += [f'<line x1="{left + wide + 16}" y1="{key}" x2="{left + wide + 46}" y2="{key}" '
                 f'class="line {style}"{dash}/>', mark(left + wide + 31, key, style),
                 text(left + wide + 54, key + 4, name, "small")]
    return svg(left + wide + 210, top + high + 46, title, description, body)


def dot_chart(title, description, rows, names, x_label, most):
    """`rows`: (label, values); a mark for each value, in the styles a, b, c, by `names`."""
    left, top, wide, high = 132, 30, 420, 18
    bottom = top + len(rows) * high
    body = []
    for value in range(0, most + 1, 100):
        x = left + value / most * wide
        body += [line(x, top, x, bottom, "grid"), text(x, bottom + 14, str(value), "small mid")]
    for number, name in enumerate(names):
        x = left + number * 190
        body += [mark(x + 6, 12, "abc"[number]), text(x + 16, 16, name, "small")]
    for row, (label, values) in enumerate(rows):
        y = top + row * high + high / 2
        body.append(text(left - 8, y + 4, label, "small end"))
        body += [mark(round(left + value / most * wide, 1), y, "abc"[number]) for number, value in enumerate(values)]
    body.append(text(left + wide / 2, bottom + 32, x_label, "mid"))
    return svg(left + wide + 20, bottom + 42, title, description, body)
