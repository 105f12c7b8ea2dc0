"use strict";

// What is drawn of one annotation, in its own coordinates: lengths of the model, y up. Widths of
// texts come from the browser, so a frame fits what it holds.
Page.Pen = (() => {
  const font = "Arial, 'Liberation Sans', 'DejaVu Sans', sans-serif";
  const capital = 0.716; // height of a capital, as a multiple of the font's size
  const context = document.createElement("canvas").getContext("2d");
  const widths = new Map();

  // The width of a text whose capitals are 1 high.
  const widthOf = (text) => {
    let width = widths.get(text);
    if (width === undefined) {
      context.font = `100px ${font}`;
      width = context.measureText(text).width / (100 * capital);
      if (widths.size > 20000) widths.clear();
      widths.set(text, width);
    }
    return width;
  };

  // A line of text as runs of plain characters and single symbols.
  const runsOf = (line) => {
    const runs = [];
    let plain = "";
    const flush = () => {
      if (plain) runs.push({ text: plain, width: widthOf(plain) });
      plain = "";
    };
    for (const character of line) {
      const shape = Page.glyphs.shapeOf(character);
      if (!shape) {
        plain += character;
        continue;
      }
      flush();
      runs.push({ shape, width: shape.width + 0.15 });
    }
    flush();
    return runs;
  };

  class Pen {
    constructor() {
      this.ops = [];
      this.box = [Infinity, Infinity, -Infinity, -Infinity]; // of everything drawn
    }

    grow(x, y) {
      const box = this.box;
      if (x < box[0]) box[0] = x;
      if (y < box[1]) box[1] = y;
      if (x > box[2]) box[2] = x;
      if (y > box[3]) box[3] = y;
    }

    // Points as x, y, x, y ...
    path(points, { closed = false, filled = false } = {}) {
      for (let i = 0; i < points.length; i += 2) this.grow(points[i], points[i + 1]);
      this.ops.push({ kind: "path", points, closed: closed || filled, filled });
    }

    rectangle(x, y, width, height) {
      this.path([x, y, x + width, y, x + width, y + height, x, y + height], { closed: true });
    }

    // `ground`: the circle hides what is under it.
    circle(x, y, radius, ground = false) {
      this.grow(x - radius, y - radius);
      this.grow(x + radius, y + radius);
      this.ops.push({ kind: "circle", x, y, radius, ground });
    }

    shape({ width, path, filled, letter }, x, y, height) {
      this.grow(x, y - 0.2 * height);
      this.grow(x + width * height, y + 1.2 * height);
      this.ops.push({ kind: "glyph", path, filled, x, y, scale: height / 100 });
      if (!letter) return;
      const size = 0.66 * height;
      this.plain(letter, x + 0.77 * height - (widthOf(letter) * size) / 2, y + 0.17 * height, size);
    }

    plain(text, x, y, height) {
      this.grow(x, y);
      this.grow(x + widthOf(text) * height, y + height);
      this.ops.push({ kind: "text", text, x, y, size: height / capital });
    }

    // Writes a line with its foot at (x, y) and returns its width.
    write(line, x, y, height) {
      const start = x;
      for (const { text, shape, width } of runsOf(line)) {
        if (shape) this.shape(shape, x, y, height);
        else this.plain(text, x, y, height);
        x += width * height;
      }
      return x - start;
    }
  }

  Pen.font = font;
  // The width of a line whose capitals are 1 high.
  Pen.width = (line) => runsOf(line).reduce((sum, run) => sum + run.width, 0);
  return Pen;
})();
