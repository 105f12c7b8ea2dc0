"use strict";

// The text of a dimension, and its lines.

// Draws the text from the origin on and returns the box around it.
Page.layoutDimension = (pen, data, h) => {
  const { Pen, glyphs, clean, number } = Page;
  const { texts } = data;
  const degree = data.mainType === "angular" || data.type === "angularCoordinate" ? "°" : "";
  const write = (text, x, y, size) => pen.write(clean(text).replace(/\n/g, " "), x, y, size);
  const small = 0.75 * h;
  let x = 0;

  // Two lines, one above the other, around the middle of the line of text.
  const stack = (upper, lower, size) => {
    const middle = h / 2;
    const widths = [upper, lower].map((text) => Pen.width(text) * size);
    const wide = Math.max(...widths);
    pen.write(upper, x + wide - widths[0], middle + 0.2 * size, size);
    pen.write(lower, x + wide - widths[1], middle - 1.2 * size, size);
    x += wide;
  };
  const signed = (value) => {
    const text = number(value, data.tolerancePrecision ?? 0);
    return value > 0 ? `+${text}` : text;
  };
  const deviations = () => {
    const { upper, lower } = data;
    if (data.tolerance !== "plusMinus" || (upper === null && lower === null)) return;
    x += 0.3 * h;
    if (upper !== null && lower !== null && Math.abs(upper + lower) <= 1e-9 * Math.abs(upper)) {
      x += pen.write(`±${number(upper, data.tolerancePrecision ?? 0)}${degree}`, x, 0, h);
    } else if (upper === null || lower === null) {
      x += pen.write(signed(upper ?? lower) + degree, x, 0, h);
    } else {
      stack(signed(upper) + degree, signed(lower) + degree, small);
    }
  };
  const value = () => {
    const { upperText, lowerText } = data;
    if (upperText && lowerText)
      return stack(clean(upperText) + degree, clean(lowerText) + degree, h);
    if (upperText || lowerText) {
      x += write((upperText || lowerText) + degree, x, 0, h);
      return undefined;
    }
    if (data.value === null) return undefined;
    x += pen.write(number(data.value, data.precision ?? 0) + degree, x, 0, h);
    return deviations();
  };

  if (texts.holeCallout && data.value === null && !data.upperText && !data.lowerText) {
    x += write(texts.holeCallout, x, 0, h);
  } else {
    const isBasic = data.tolerance === "basic";
    const bracket = (text, mark) => (isBasic && text === mark ? "" : (text ?? ""));
    if (texts.before) x += write(texts.before, x, 0, h) + 0.4 * h;
    const start = x;
    x += write(bracket(texts.prefix, "[") + (glyphs.sizes[data.type] ?? ""), x, 0, h);
    const isEmpty = x === start;
    value();
    x += write(bracket(texts.suffix, "]"), x, 0, h);
    if (isBasic && (x > start || !isEmpty))
      pen.rectangle(start - h / 2, -h / 2, x - start + h, 2 * h);
    if (texts.after) x += 0.4 * h + write(texts.after, x + 0.4 * h, 0, h);
  }
  if (texts.upper) write(texts.upper, 0, 2 * h, h);
  if (texts.lower) write(texts.lower, 0, -2 * h, h);
  if (texts.below) write(texts.below, 0, -3.5 * h, h);
  return pen.ops.length > 0 ? pen.box.slice() : [0, 0, 0, 0];
};

// The lines of a dimension in its own coordinates, as polylines [[x, y], ...]: of the dimension line
// the arrows' ends first and last. `local` takes a point of the report there, `box` is around the
// text. Null without a dimension line.
Page.dimensionLines = (data, local, box, h) => {
  if (!data.line) return null;
  const minus = (a, b) => [a[0] - b[0], a[1] - b[1]];
  const plus = (a, b, k) => [a[0] + b[0] * k, a[1] + b[1] * k];
  const cross = (a, b) => a[0] * b[1] - a[1] * b[0];
  const dot = (a, b) => a[0] * b[0] + a[1] * b[1];
  let [first, second] = data.line.map(local);
  const extensions = [];
  let centre = null;
  if (data.extensionLines) {
    const [start1, start2, end1] = data.extensionLines.map(local);
    const along = minus(end1, start1);
    const length = Math.hypot(...along);
    // The line that the first extension line passes through ends at `first`.
    const away = (point) => Math.abs(cross(along, minus(point, start1)));
    if (away(second) < away(first)) [first, second] = [second, first];
    const overshoot = length > 0 ? dot(minus(end1, first), along) / length : 0;
    const direction2 = minus(second, start2);
    const length2 = Math.hypot(...direction2);
    extensions.push([start1, end1]);
    const reach = Math.max(0, overshoot);
    if (length2 > 0) extensions.push([start2, plus(second, direction2, reach / length2)]);
    // The extension lines of an angle meet in its vertex.
    const across = cross(along, direction2);
    const isAngle = data.mainType === "angular" || data.type === "angularCoordinate";
    if (isAngle && Math.abs(across) > 1e-6 * length * length2) {
      const vertex = plus(start1, along, cross(minus(start2, start1), direction2) / across);
      const radii = [first, second].map((end) => Math.hypot(...minus(end, vertex)));
      if (Math.abs(radii[0] - radii[1]) < 0.02 * radii[0]) centre = vertex;
    }
  }
  if (centre) return { line: arc(first, second, centre), extensions, shelf: [] };

  // The line is drawn on to a text that stands beyond its ends.
  const along = minus(second, first);
  const squared = dot(along, along);
  const shelf = [];
  if (squared > 0 && box[2] > box[0]) {
    const middle = [(box[0] + box[2]) / 2, (box[1] + box[3]) / 2];
    const k = dot(minus(middle, first), along) / squared;
    const foot = plus(first, along, k);
    const reach = ((box[2] - box[0] + box[3] - box[1]) / 2 + h) / Math.sqrt(squared);
    if (k < -reach) shelf.push([first, foot]);
    if (k > 1 + reach) shelf.push([second, foot]);
    if (shelf.length > 0 && (foot[0] < box[0] - h / 2 || foot[0] > box[2] + h / 2)) {
      shelf[0].push([foot[0] < box[0] ? box[0] - h / 4 : box[2] + h / 4, foot[1]]);
    }
  }
  return { line: [first, second], extensions, shelf };

  function arc(from, to, vertex) {
    const radius = Math.hypot(...minus(from, vertex));
    const angle = (point) => Math.atan2(point[1] - vertex[1], point[0] - vertex[0]);
    const start = angle(from);
    let sweep = angle(to) - start;
    if (sweep > Math.PI) sweep -= 2 * Math.PI;
    if (sweep < -Math.PI) sweep += 2 * Math.PI;
    const steps = Math.max(2, Math.ceil(Math.abs(sweep) / 0.05));
    const points = [];
    for (let i = 0; i <= steps; ++i) {
      const a = start + (sweep * i) / steps;
      points.push([vertex[0] + radius * Math.cos(a), vertex[1] + radius * Math.sin(a)]);
    }
    return points;
  }
};
