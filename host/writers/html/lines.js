"use strict";

// The lines of an annotation in the model: leaders, dimension and extension lines, targets' marks.
// Each has points, what its ends look like (arrow, triangle, cross) and a ring at its start for all
// around. The answer takes the box of the annotation's text, which lines end at.
Page.linesOf = (model, annotation, h) => (box) => {
  const { data, place } = annotation;
  const lines = [];
  const toModel = (points) => points.map((point) => model.toModel(place, point));
  // A datum's triangle is at the end of the leader that starts at its letter; another leader may go
  // on from there.
  const far = ({ tail }) => (tail ? Page.length(Page.subtract(tail, place.at)) : 0);
  const nearest = Math.min(...data.leaders.map(far));
  const endOf = (leader) => {
    if (data.kind === "datumTarget") return null;
    return data.kind === "datum" && far(leader) === nearest ? "triangle" : "arrow";
  };
  const allAround = Boolean(data.tolerance?.allAround);
  for (const leader of data.leaders) {
    const { tail, head } = leader;
    if (!head) continue;
    const points = tail ? [tail, head] : [model.toModel(place, middleOf(box)), head];
    lines.push({ points: fromBox(points), end: endOf(leader), ring: allAround });
  }
  if (data.dimension) dimension(data.dimension);
  if (data.datumTarget) {
    const { point1, point2, type } = data.datumTarget;
    const points = [point1, point2].filter(Boolean);
    for (const point of points) lines.push({ points: [point, point], end: "cross" });
    if (type === "line" && points.length === 2) lines.push({ points });
  }
  return lines.filter(({ points }) => points.every((point) => point.every(Number.isFinite)));

  function middleOf([x0, y0, x1, y1]) {
    return [(x0 + x1) / 2, (y0 + y1) / 2];
  }

  // A leader starts at the box's side: one that starts inside is cut there, and one that starts
  // beside it gets a shoulder. The report's tail is where the document's own text ended.
  function fromBox(points) {
    const [x0, y0, x1, y1] = box;
    const [x, y, z] = model.toLocal(place, points[0]);
    if (x1 <= x0 || Math.abs(z) > h) return points;
    if (x > x0 && x < x1 && y > y0 && y < y1) {
      const [hx, hy] = model.toLocal(place, points[1]);
      let k = 0;
      const leave = (from, to, low, high) =>
        to > high ? (high - from) / (to - from) : to < low ? (low - from) / (to - from) : 1;
      k = Math.min(leave(x, hx, x0, x1), leave(y, hy, y0, y1));
      const offset = Page.subtract(points[1], points[0]);
      return [Page.along(points[0], offset, Math.min(k, 0.99)), points[1]];
    }
    if (y < y0 - h || y > y1 + h) return points;
    if (x >= x1) return [...toModel([[x1, y]]), ...points];
    if (x <= x0) return [...toModel([[x0, y]]), ...points];
    return points;
  }

  function dimension(values) {
    const local = (point) => model.toLocal(place, place.point(point));
    const made = Page.dimensionLines(values, local, box, h);
    if (!made) return;
    for (const points of made.extensions.concat(made.shelf))
      lines.push({ points: toModel(points) });
    const { line } = made;
    const length = line
      .slice(1)
      .reduce((sum, [x, y], i) => sum + Math.hypot(x - line[i][0], y - line[i][1]), 0);
    if (length > 5 * h || line.length > 2) {
      lines.push(...around(line));
    } else {
      // Too short for arrows between the extension lines: they point from outside.
      const [[ax, ay], [bx, by]] = line;
      const k = length > 0 ? (3 * h) / length : 0;
      lines.push({ points: toModel(line) });
      const outer = (x, y, dx, dy) =>
        toModel([
          [x - dx * k, y - dy * k],
          [x, y],
        ]);
      lines.push({ points: outer(ax, ay, bx - ax, by - ay), end: "arrow" });
      lines.push({ points: outer(bx, by, ax - bx, ay - by), end: "arrow" });
    }
  }

  // A dimension line with arrows at its ends, open where the text stands on it.
  function around(line) {
    const pad = 0.4 * h;
    const isIn = ([x, y]) =>
      x > box[0] - pad && x < box[2] + pad && y > box[1] - pad && y < box[3] + pad;
    const fine = [];
    line.forEach((point, i) => {
      if (i > 0) {
        const [x, y] = line[i - 1];
        const steps = line.length > 2 ? 4 : 100;
        for (let k = 1; k < steps; ++k) {
          fine.push([x + ((point[0] - x) * k) / steps, y + ((point[1] - y) * k) / steps]);
        }
      }
      fine.push(point);
    });
    const open = fine.findIndex(isIn);
    if (open < 0) return [{ points: toModel(line), start: "arrow", end: "arrow" }];
    let close = fine.length - 1;
    while (!isIn(fine[close])) --close;
    const before = fine.slice(0, open);
    const after = fine.slice(close + 1);
    const parts = [];
    if (before.length > 1) parts.push({ points: toModel(before), start: "arrow" });
    if (after.length > 1) parts.push({ points: toModel(after), end: "arrow" });
    return parts;
  }
};
