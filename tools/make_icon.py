#!/usr/bin/env python3
"""Writes resources/Quillet.ico: the side bar in miniature, a narrow dark
rounded panel holding three drive cards with coloured meter bars.

Each size has its own pixel layout so the small ones stay sharp; shapes are
anti-aliased by supersampling. Standard library only; the output is the same
on every run. Usage: tools/make_icon.py [output.ico]
"""
import struct
import sys
from pathlib import Path

SAMPLES = 8  # per axis and pixel

# Per size: panel rectangle and radius, card column, card rows, and the parts of a card.
LAYOUTS = {
    48: dict(panel=(9, 1, 39, 47, 7), cards_x=(12, 36), cards=[(3.5, 16), (17.5, 30), (31.5, 44)],
             card_radius=3, glyph=(2, 2.5, 7, 7.5), led=True, label=(9, 3.5, 21, 5), bar=(2, 9, 22, 11.5),
             bar_radius=1.25),
    32: dict(panel=(6, 0.5, 26, 31.5, 5), cards_x=(8, 24), cards=[(2.5, 11), (12, 20.5), (21.5, 30)],
             card_radius=2, glyph=(1.5, 1.5, 5, 4.5), led=False, label=(6.5, 2, 14, 3.5), bar=(1.5, 5.5, 14.5, 7.5),
             bar_radius=1),
    16: dict(panel=(3, 0, 13, 16, 2.5), cards_x=(4, 12), cards=[(1, 5), (6, 10), (11, 15)],
             card_radius=1, glyph=None, led=False, label=None, bar=(1, 2, 7, 4), bar_radius=0),
}

# Used share of each card's meter and its colour: green, amber, blue.
METERS = [(0.62, (61, 220, 132), (30, 160, 90)),
          (0.86, (255, 190, 40), (230, 130, 20)),
          (0.38, (90, 170, 255), (50, 110, 230))]


def inside_round_rect(x, y, rect, radius):
    left, top, right, bottom = rect
    if x < left or x >= right or y < top or y >= bottom:
        return False
    if radius <= 0:
        return True
    cx = min(max(x, left + radius), right - radius)
    cy = min(max(y, top + radius), bottom - radius)
    return (x - cx) ** 2 + (y - cy) ** 2 <= radius ** 2


def mix(a, b, t):
    return tuple(a[i] + (b[i] - a[i]) * t for i in range(3))


def vertical(top_colour, bottom_colour, top, bottom):
    return lambda x, y: mix(top_colour, bottom_colour, min(max((y - top) / max(bottom - top, 1e-9), 0.0), 1.0))


def shapes_for(size):
    """Shapes back to front: (rect, radius, colour function of x and y)."""
    lay = LAYOUTS[size]
    pl, pt, pr, pb, prad = lay["panel"]
    out = [((pl, pt, pr, pb), prad, lambda x, y: (78, 88, 110)),  # rim
           ((pl + 1, pt + 1, pr - 1, pb - 1), max(prad - 1, 0), vertical((46, 53, 70), (18, 21, 29), pt, pb))]
    cl, cr = lay["cards_x"]
    for (ct, cb), (share, light, dark) in zip(lay["cards"], METERS):
        out.append(((cl, ct, cr, cb), lay["card_radius"], vertical((70, 80, 102), (48, 55, 72), ct, cb)))
        if size >= 32:  # a light top edge lifts the card off the panel
            out.append(((cl + 1, ct, cr - 1, ct + 0.75), 0, lambda x, y: (112, 124, 150)))
        if lay["glyph"]:
            gl, gt, gr, gb = lay["glyph"]
            out.append(((cl + gl, ct + gt, cl + gr, ct + gb), 1, vertical((225, 230, 240), (160, 170, 190), ct + gt, ct + gb)))
            if lay["led"]:
                out.append(((cl + gr - 2, ct + gb - 1.5, cl + gr - 1, ct + gb - 0.5), 0, lambda x, y, c=light: c))
        if lay["label"]:
            ll, lt, lr, lb = lay["label"]
            out.append(((cl + ll, ct + lt, cl + lr, ct + lb), 0.5, lambda x, y: (150, 162, 185)))
        bl, bt, br, bb = lay["bar"]
        out.append(((cl + bl, ct + bt, cl + br, ct + bb), lay["bar_radius"], lambda x, y: (20, 24, 32)))
        fill_right = cl + bl + (br - bl) * share
        out.append(((cl + bl, ct + bt, fill_right, ct + bb), lay["bar_radius"],
                    vertical(light, dark, ct + bt, ct + bb)))
    return out


def render(size):
    """Rows from the top of (r, g, b, a) bytes, colour not premultiplied."""
    shapes = shapes_for(size)
    rows = []
    for py in range(size):
        row = []
        for px in range(size):
            acc = [0.0, 0.0, 0.0, 0.0]  # premultiplied sums
            for sy in range(SAMPLES):
                y = py + (sy + 0.5) / SAMPLES
                for sx in range(SAMPLES):
                    x = px + (sx + 0.5) / SAMPLES
                    colour = None
                    for rect, radius, paint in shapes:
                        if inside_round_rect(x, y, rect, radius):
                            colour = paint(x, y)
                    if colour is not None:
                        acc[0] += colour[0]
                        acc[1] += colour[1]
                        acc[2] += colour[2]
                        acc[3] += 1.0
            n = SAMPLES * SAMPLES
            alpha = acc[3] / n
            if alpha == 0:
                row.append((0, 0, 0, 0))
            else:
                row.append(tuple(int(round(acc[i] / acc[3])) for i in range(3)) + (int(round(alpha * 255)),))
        rows.append(row)
    return rows


def dib(size, rows):
    header = struct.pack("<IiiHHIIiiII", 40, size, size * 2, 1, 32, 0, 0, 0, 0, 0, 0)
    pixels = bytearray()
    for row in reversed(rows):  # bottom-up
        for r, g, b, a in row:
            pixels += bytes((b, g, r, a))
    mask_stride = ((size + 31) // 32) * 4
    mask = bytearray()
    for row in reversed(rows):
        line = bytearray(mask_stride)
        for x, (_, _, _, a) in enumerate(row):
            if a == 0:
                line[x // 8] |= 0x80 >> (x % 8)
        mask += line
    return header + bytes(pixels) + bytes(mask)


def main():
    out = Path(sys.argv[1]) if len(sys.argv) > 1 else Path(__file__).resolve().parent.parent / "resources" / "Quillet.ico"
    sizes = [16, 32, 48]
    images = [dib(s, render(s)) for s in sizes]
    data = bytearray(struct.pack("<HHH", 0, 1, len(sizes)))
    offset = 6 + 16 * len(sizes)
    for s, img in zip(sizes, images):
        data += struct.pack("<BBBBHHII", s, s, 0, 0, 1, 32, len(img), offset)
        offset += len(img)
    for img in images:
        data += img
    out.write_bytes(bytes(data))
    print(f"wrote {out} ({len(data)} bytes)")


if __name__ == "__main__":
    main()
