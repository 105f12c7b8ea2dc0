"use strict";

// How each kind of annotation is drawn, from what the report has of it. Each function draws with a
// pen from the annotation's origin on; `h` is the height of its characters.
Page.layout = (() => {
  const { Pen, glyphs, clean, number } = Page;
  const most = { lines: 80, characters: 160 };

  const lines = (text) =>
    clean(text)
      .split("\n")
      .slice(0, most.lines)
      .map((line) => (line.length > most.characters ? `${line.slice(0, most.characters)}…` : line));

  // Lines from (x, y) downwards.
  const block = (pen, text, x, y, h) => {
    for (const [i, line] of lines(text).entries()) pen.write(line, x, y - i * 1.5 * h, h);
  };
  const widthOfBlock = (text) => Math.max(...lines(text).map(Pen.width));

  const modifiers = (list) =>
    list
      .map(({ type, magnitude }) => {
        const symbol =
          type === null ? "?" : (glyphs.modifiers[type] ?? Page.words(type).toUpperCase());
        const space = symbol.length > 1 ? " " : "";
        return symbol + (magnitude === null ? "" : space + number(magnitude));
      })
      .filter(Boolean)
      .map((text) => ` ${text}`)
      .join("");

  // The compartments behind the characteristic's, for one row; and the refinement's, if it has one.
  const compartments = (row) => {
    const zone = glyphs.zones[row.valueType] ?? "";
    let value = zone + (row.magnitude === null ? "?" : number(row.magnitude));
    let rate = "";
    if (row.rateUnit1) rate += `/${number(row.rateUnit1)}`;
    if (row.rateUnit2) rate += `×${number(row.rateUnit2)}`;
    const refinement = row.refinement ? zone + number(row.refinement) + rate : "";
    if (!refinement) value += rate;
    const cells = [value + modifiers(row.modifiers)];
    for (const { label, datums } of row.frame ? row.frame.references : []) {
      const texts = datums.map((datum) => (datum.label ?? "?") + modifiers(datum.modifiers));
      cells.push(texts.join("-") || (label ?? "?"));
    }
    return { cells: cells.map((cell) => lines(cell)[0]), refinement };
  };

  // A feature control frame: its first row stands on the origin, the others hang below.
  const tolerance = (pen, data, h) => {
    const high = 2 * h;
    const pad = 0.45 * h;
    const { before, after, upper, lower, prefix, suffix } = data.notes;
    const rows = [];
    for (const row of data.rows) {
      const { cells, refinement } = compartments(row);
      rows.push(cells);
      if (refinement) rows.push([refinement]);
    }
    const symbol = glyphs.characteristics[data.type] ?? Page.words(data.type ?? "?");
    // Compartments of one column are equally wide.
    const widths = [];
    const textAt = (cells, column) =>
      column === 0 ? (prefix ?? "") + cells[0] + (suffix ?? "") : cells[column];
    for (const cells of rows) {
      cells.forEach((_, column) => {
        const width = Math.max(Pen.width(textAt(cells, column)) * h + 2 * pad, high);
        widths[column] = Math.max(widths[column] || 0, width);
      });
    }
    const wide = Pen.width(symbol) * h + 2 * pad;
    const bottom = high - Math.max(rows.length, 1) * high;
    pen.rectangle(0, bottom, wide, high - bottom);
    const middle = (bottom + high) / 2 - h / 2;
    pen.write(symbol, pad, middle, h);
    let right = wide;
    rows.forEach((cells, i) => {
      let x = wide;
      const y = -i * high;
      cells.forEach((_, column) => {
        const text = textAt(cells, column);
        const width = widths[column];
        pen.rectangle(x, y, width, high);
        pen.write(text, x + (width - Pen.width(text) * h) / 2, y + h / 2, h);
        x += width;
      });
      right = Math.max(right, x);
    });
    const frame = [0, bottom, right, high];
    if (before) block(pen, before, -(widthOfBlock(before) + 0.5) * h, h / 2, h);
    if (after) block(pen, after, right + 0.5 * h, h / 2, h);
    if (upper) block(pen, upper, 0, high + 0.5 * h + (lines(upper).length - 1) * 1.5 * h, h);
    if (lower) block(pen, lower, 0, bottom - 1.5 * h, h);
    return frame;
  };

  const datum = (pen, data, h) => {
    const label = lines(data.label ?? "?")[0];
    const width = Math.max(Pen.width(label) * h + h, 2 * h);
    const x = (Pen.width(label) * h - width) / 2;
    pen.rectangle(x, -h / 2, width, 2 * h);
    pen.write(label, 0, 0, h);
    return [x, -h / 2, x + width, 1.5 * h];
  };

  // A circle around the origin: the target's size above, its label below.
  const datumTarget = (pen, data, h) => {
    const label = lines(data.label ?? "?")[0];
    const note = data.note ? lines(data.note)[0] : "";
    const wide = Math.max(Pen.width(label), 2) * h;
    const radius = Math.max(1.75 * h, 0.45 * wide + 0.9 * h);
    pen.circle(0, 0, radius, true);
    pen.path([-radius, 0, radius, 0]);
    pen.write(label, (-Pen.width(label) * h) / 2, -1.3 * h, h);
    const fits = note && Pen.width(note) * h < 1.5 * radius;
    if (fits) pen.write(note, (-Pen.width(note) * h) / 2, 0.3 * h, h);
    else if (note) pen.write(note, radius + 0.4 * h, 0.3 * h, h);
    return [-radius, -radius, radius, radius];
  };

  // The symbol of ISO 21920 and ASME Y14.36 with its foot on the origin.
  const roughness = (pen, data, h) => {
    const [average, removal, method, cutoff, secondary, lay, other] = data.fields.map((field) =>
      field ? lines(field)[0] : "",
    );
    const slope = Math.tan(Math.PI / 6);
    const shoulder = [-1.4 * h * slope, 1.4 * h];
    const top = 3.2 * h;
    const above = [method, [cutoff, secondary].filter(Boolean).join(" / ")].filter(Boolean);
    const under = [average, other].filter(Boolean);
    const start = top * slope;
    const length = Math.max(1, ...above.concat(under).map((text) => Pen.width(text) + 1)) * h;
    const bar = above.length + under.length > 0 ? [start + length, top] : [];
    pen.path([...shoulder, 0, 0, start, top, ...bar]);
    if (data.obtention === "machiningMandatory") pen.path([...shoulder, 1.4 * h * slope, 1.4 * h]);
    if (data.obtention === "machiningForbidden") pen.circle(0, 0.95 * h, 0.45 * h);
    if (data.applicability === "allPartSurfaces") pen.circle(start, top, 0.4 * h);
    const text = start + 0.4 * h;
    for (const [i, line] of above.entries()) pen.write(line, text, top + (0.4 + 1.5 * i) * h, h);
    for (const [i, line] of under.entries()) pen.write(line, text, top - (1.4 + 1.5 * i) * h, h);
    if (lay) pen.write(lay, 1.4 * h, 0, h);
    if (removal) pen.write(removal, shoulder[0] - (Pen.width(removal) + 0.3) * h, 0.2 * h, h);
    return pen.box.slice();
  };

  const note = (pen, texts, h) => {
    let y = 0;
    for (const { string } of texts) {
      if (!string) continue;
      block(pen, string, 0, y, h);
      y -= lines(string).length * 1.5 * h;
    }
    return pen.box.slice();
  };

  const flagNote = (pen, texts, h) => {
    const text = lines(texts.map(({ string }) => string ?? "").join(" "))[0];
    const width = Math.max(Pen.width(text) * h + h, 2 * h);
    pen.path([0, 0, width, 0, width + h, h, width, 2 * h, 0, 2 * h], { closed: true });
    pen.write(text, (width - Pen.width(text) * h) / 2, h / 2, h);
    return [0, 0, width + h, 2 * h];
  };

  // Draws an annotation: the pen's strokes, and the box [x0, y0, x1, y1] that lines end at.
  return (annotation, h) => {
    const pen = new Pen();
    const { data } = annotation;
    let box = null;
    if (data.tolerance) box = tolerance(pen, data.tolerance, h);
    else if (data.dimension) box = Page.layoutDimension(pen, data.dimension, h);
    else if (data.datum) box = datum(pen, data.datum, h);
    else if (data.datumTarget) box = datumTarget(pen, data.datumTarget, h);
    else if (data.roughness) box = roughness(pen, data.roughness, h);
    else if (data.kind === "flagNote") box = flagNote(pen, data.texts, h);
    else box = note(pen, data.texts, h);
    if (!Number.isFinite(box[0])) box = [0, 0, 0, 0];
    return { ops: pen.ops, box, whole: pen.ops.length > 0 ? pen.box : box };
  };
})();
