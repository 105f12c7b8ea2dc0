"use strict";

// The report and the drawing that stand in the page, and the ways from ids to what they name.
Page.readReport = () => {
  const { add, along, cross, dot, scale, subtract, unit } = Page;
  const read = (id) => JSON.parse(document.getElementById(id).textContent);
  const report = read("report");
  const drawing = read("drawing");
  const rows = new Map();
  for (const row of document.querySelectorAll("#list [data-annotation]")) {
    rows.set(row.dataset.index, row);
  }

  // Annotations in the report's order. `key` is what the row calls it: ids may be missing or repeated.
  const annotations = [];
  const byKey = new Map();
  const byId = new Map();
  report.views.forEach((view, v) => {
    view.annotations.forEach((data, a) => {
      const row = rows.get(`${v}:${a}`) || null;
      const key = row ? row.dataset.annotation : data.id || `${v}:${a}`;
      const index = `${v}:${a}`;
      const made = { key, index, data, row, kind: data.kind, place: placeOf(view.frame, data) };
      annotations.push(made);
      byKey.set(key, made);
      if (data.id === null) return;
      if (!byId.has(data.id)) byId.set(data.id, []);
      byId.get(data.id).push(made);
    });
  });

  // Where an annotation stands: `at` is the origin of its own coordinates, x along its text and y up
  // of length 1; `point` takes the report's points in the plane of its view to the model. Null for
  // one that is not placed.
  function placeOf(frame, data) {
    if (!frame || !data.position || data.depth === null) return null;
    const normal = unit(cross(frame.xAxis, frame.yAxis), null);
    if (normal === null) return null;
    const point = ([u, v]) =>
      along(along(along(frame.origin, frame.xAxis, u), frame.yAxis, v), normal, data.depth);
    const at = point(data.position);
    if (!at.every(Number.isFinite)) return null;
    const x = unit(frame.xAxis, null);
    return { at, x, y: cross(normal, x), normal, point };
  }

  const entities = new Map();
  for (const entity of report.entities) if (entity.id !== null) entities.set(entity.id, entity);
  // Of what the document hides, only what is lit is drawn; but a part that is hidden as a whole is.
  const maps = {};
  const isAllHidden = drawing.edges.concat(drawing.faces).every(({ hidden }) => hidden);
  for (const kind of ["edges", "faces", "vertices"]) {
    maps[kind] = new Map(drawing[kind].map((shape) => [shape.id, shape]));
    if (!isAllHidden) drawing[kind] = drawing[kind].filter(({ hidden }) => !hidden);
  }

  const findings = new Map();
  for (const finding of report.checks?.findings ?? []) {
    if (!findings.has(finding.annotation)) findings.set(finding.annotation, []);
    findings.get(finding.annotation).push(finding);
  }

  const box = new Page.Box();
  for (const { points } of drawing.edges.concat(drawing.faces)) {
    for (let i = 0; i + 2 < points.length; i += 3)
      box.add([points[i], points[i + 1], points[i + 2]]);
  }
  if (box.isEmpty()) {
    for (const { place, data } of annotations) {
      if (place) box.add(place.at);
      for (const leader of data.leaders) if (leader.head) box.add(leader.head);
    }
  }
  const size = box.size() || 1;

  // A point of the model in an annotation's own coordinates.
  const toLocal = (place, point) => {
    const offset = subtract(point, place.at);
    return [dot(offset, place.x), dot(offset, place.y), dot(offset, place.normal)];
  };
  const toModel = (place, [x, y]) => add(along(place.at, place.x, x), scale(place.y, y));

  // The report has the height of notes' characters alone. The leader of a feature control frame
  // starts half of the frame's height above its foot, which is as much as the characters' height.
  const heightFromLeader = ({ data, place }) => {
    if (data.kind !== "geometricTolerance" || !place) return undefined;
    for (const { tail } of data.leaders) {
      if (!tail) continue;
      const [x, y, z] = toLocal(place, tail);
      const isAtSide = Math.abs(x) < 0.1 * y || x > 3 * y;
      if (isAtSide && Math.abs(z) < 0.1 * y && y > size / 2000 && y < size / 8) return y;
    }
    return undefined;
  };
  const noteHeights = [];
  const leaderHeights = [];
  for (const annotation of annotations) {
    const found = heightFromLeader(annotation);
    if (found) leaderHeights.push(found);
    for (const { string, font } of annotation.data.texts) {
      if (string && font && font.height > 0) noteHeights.push(font.height);
    }
  }
  const usual = Page.median(leaderHeights) || Page.median(noteHeights) || size / 80;
  const heightOf = (annotation) => {
    const font = annotation.data.texts
      .map((text) => text.font)
      .find((one) => one && one.height > 0);
    if (font && annotation.data.texts.some((text) => text.string)) return font.height;
    return heightFromLeader(annotation) || usual;
  };

  return {
    report,
    drawing,
    annotations,
    byKey,
    byId: (id) => byId.get(id) || [],
    captures: report.captures,
    entities,
    ...maps,
    findingsOf: ({ id }) => (id === null ? [] : (findings.get(id) ?? [])),
    box,
    size,
    unit: report.source.linearUnit || "",
    heightOf,
    toLocal,
    toModel,
  };
};
