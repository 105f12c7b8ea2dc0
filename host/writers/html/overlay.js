"use strict";

// The annotations, on a canvas above the part: sharp at any size, in the fonts that are there.
Page.Overlay = class {
  constructor(model, canvas) {
    this.model = model;
    this.canvas = canvas;
    this.context = canvas.getContext("2d");
    this.prepared = new Map();
    this.hits = []; // what was drawn, nearest last: { annotation, corners }
    this.most = 1500; // annotations in one picture
  }

  // Takes the canvas to a size in the page's pixels, `ratio` of the screen's in each.
  resize(width, height, ratio) {
    this.screen = new DOMMatrix([ratio, 0, 0, ratio, 0, 0]);
    this.canvas.width = Math.floor(width * ratio);
    this.canvas.height = Math.floor(height * ratio);
  }

  // How far an annotation reaches from its place, roughly.
  reachOf(annotation) {
    if (annotation.reach === undefined) {
      const { place, data } = annotation;
      annotation.height = this.model.heightOf(annotation);
      let reach = 40 * annotation.height;
      for (const { head } of data.leaders) {
        if (head) reach = Math.max(reach, Page.length(Page.subtract(head, place.at)));
      }
      for (const point of data.dimension?.extensionLines || []) {
        reach = Math.max(reach, Page.length(Page.subtract(place.point(point), place.at)));
      }
      annotation.reach = reach;
    }
    return annotation.reach;
  }

  // Strokes, box and lines of an annotation, made once.
  prepare(annotation) {
    let made = this.prepared.get(annotation);
    if (made) return made;
    this.reachOf(annotation);
    const h = annotation.height;
    made = { h, ...Page.layout(annotation, h), lines: Page.linesOf(this.model, annotation, h) };
    made.lines = made.lines(made.box);
    this.prepared.set(annotation, made);
    return made;
  }

  // The places that the annotations take up in the model.
  extentOf(annotation) {
    const { whole } = this.prepare(annotation);
    const corners = [0, 1, 2, 3].map((i) => [whole[i & 1 ? 2 : 0], whole[i & 2 ? 3 : 1]]);
    return corners.map((corner) => this.model.toModel(annotation.place, corner));
  }

  // Draws the annotations and says how many. `look` has theme, turned (texts towards the viewer),
  // large (none too small to read), colorOf(annotation), the name of a colour, and under, a canvas
  // to draw them on or null.
  paint(camera, annotations, look) {
    const { context } = this;
    this.paper = look.theme.paper;
    context.setTransform(this.screen);
    context.clearRect(0, 0, camera.width, camera.height);
    if (look.under) context.drawImage(look.under, 0, 0, camera.width, camera.height);
    this.hits = [];
    const shown = [];
    for (const annotation of annotations) {
      if (shown.length >= this.most) break;
      if (!annotation.place) continue;
      const { at } = annotation.place;
      const screen = camera.project(at);
      if (!screen) continue;
      const depth = camera.depthOf(at);
      const scale = camera.scaleAt(depth);
      const reach = this.reachOf(annotation) * scale;
      if (annotation.height * scale < 0.5) continue;
      if (screen[0] < -reach || screen[0] > camera.width + reach) continue;
      if (screen[1] < -reach || screen[1] > camera.height + reach) continue;
      shown.push({ annotation, screen, scale, depth, color: look.colorOf(annotation) });
    }
    const rank = ({ color }) => ({ chosen: 2, datum: 1 })[color] || 0;
    shown.sort((a, b) => rank(a) - rank(b) || b.depth - a.depth);
    for (const one of shown) this.paintOne(camera, one, look);
    return shown.length;
  }

  paintOne(camera, { annotation, screen, scale, color }, look) {
    const { context } = this;
    const { place } = annotation;
    const made = this.prepare(annotation);
    const ink = look.theme[color];
    // What has a frame is put on paper, a dimension's text lightly so; notes are long.
    const opacity = { geometricTolerance: 0.85, datum: 0.85, flagNote: 0.85, dimension: 0.5 };
    const ground = opacity[annotation.kind] ?? 0;
    context.strokeStyle = context.fillStyle = ink;
    context.lineWidth = color === "ink" ? 1 : 1.6;
    this.paintLines(camera, made, scale);
    const least = look.large || color !== "ink" ? 9 : 0;
    const frame = this.frameFor(camera, place, made, screen, scale, look.turned);
    this.enlarge(frame, made, Math.max(1, least / (made.h * scale)));
    const corner = (x, y) => this.toScreen(frame, x, y);
    const quad = ([x0, y0, x1, y1], pad) => [
      corner(x0 - pad, y0 - pad),
      corner(x1 + pad, y0 - pad),
      corner(x1 + pad, y1 + pad),
      corner(x0 - pad, y1 + pad),
    ];
    if (made.ops.length > 0) {
      this.hits.push({ annotation, corners: quad(made.whole, made.h / 4) });
      context.globalAlpha = ground;
      context.fillStyle = look.theme.paper;
      this.trace(quad(made.whole, made.h / 8));
      context.fill();
      context.globalAlpha = 1;
      context.fillStyle = ink;
    }
    if (Math.max(made.h * scale, least) < 2) {
      this.trace(quad(made.whole, 0));
      context.stroke();
      return;
    }
    for (const op of made.ops) this.paintOp(op, frame);
  }

  // Makes a text larger than it is, around the middle of its left side.
  enlarge(frame, { box }, factor) {
    const [u, v] = [box[0], (box[1] + box[3]) / 2];
    const at = this.toScreen(frame, u, v);
    frame.x = frame.x.map((value) => value * factor);
    frame.y = frame.y.map((value) => value * factor);
    const now = this.toScreen(frame, u, v);
    frame.origin = [0, 1].map((i) => frame.origin[i] + at[i] - now[i]);
  }

  // Origin and axes of an annotation's coordinates on the screen, per length of 1. Where `turned` is
  // set, texts that are seen from behind, on edge or upside down are turned around their middle.
  frameFor(camera, place, made, screen, scale, turned) {
    const axis = (a) => [Page.dot(a, camera.right) * scale, -Page.dot(a, camera.up) * scale];
    let x = axis(place.x);
    let y = axis(place.y);
    if (!turned) return { origin: screen, x, y };
    const [x0, y0, x1, y1] = made.whole;
    const middle = [(x0 + x1) / 2, (y0 + y1) / 2];
    const at = this.toScreen({ origin: screen, x, y }, ...middle);
    const facing = (x[1] * y[0] - x[0] * y[1]) / (scale * scale);
    if (Math.abs(facing) < 0.25) {
      x = [scale, 0];
      y = [0, -scale];
    } else if (facing < 0) {
      x = [-x[0], -x[1]];
    }
    const lean = x[0] / Math.hypot(x[0], x[1]);
    if (lean < -0.1 || (lean <= 0.1 && x[1] > 0)) {
      x = [-x[0], -x[1]];
      y = [-y[0], -y[1]];
    }
    const [dx, dy] = this.toScreen({ origin: [0, 0], x, y }, ...middle);
    return { origin: [at[0] - dx, at[1] - dy], x, y };
  }

  toScreen({ origin, x, y }, u, v) {
    return [origin[0] + u * x[0] + v * y[0], origin[1] + u * x[1] + v * y[1]];
  }

  trace(points, closed = true) {
    const { context } = this;
    context.beginPath();
    for (const [x, y] of points) context.lineTo(x, y);
    if (closed) context.closePath();
  }

  paintOp(op, frame) {
    const { context } = this;
    const { x, y } = frame;
    if (op.kind === "path") {
      const points = [];
      for (let i = 0; i < op.points.length; i += 2) {
        points.push(this.toScreen(frame, op.points[i], op.points[i + 1]));
      }
      this.trace(points, op.closed);
      if (op.filled) context.fill();
      else context.stroke();
      return;
    }
    const [originX, originY] = this.toScreen(frame, op.x, op.y);
    const matrix = (k) =>
      new DOMMatrix([x[0] * k, x[1] * k, -y[0] * k, -y[1] * k, originX, originY]);
    if (op.kind === "text") {
      context.setTransform(this.screen.multiply(matrix(op.size / 100)));
      context.font = `100px ${Page.Pen.font}`;
      context.fillText(op.text, 0, 0);
      context.setTransform(this.screen);
      return;
    }
    // The path is taken to the screen, not the screen to the path: all lines are equally wide.
    const path = new Path2D();
    let drawn = op.path;
    if (op.kind === "circle") {
      drawn = new Path2D();
      drawn.arc(0, 0, op.radius, 0, 2 * Math.PI);
    }
    path.addPath(drawn, matrix(op.scale ?? 1));
    if (op.ground && this.paper) {
      const ink = context.fillStyle;
      context.fillStyle = this.paper;
      context.fill(path);
      context.fillStyle = ink;
    }
    context.stroke(path);
    if (op.filled) context.fill(path);
  }

  paintLines(camera, made, scale) {
    for (const { points, start, end, ring } of made.lines) {
      const screen = points.map((point) => camera.project(point));
      if (screen.some((point) => !point)) continue;
      this.trace(screen, false);
      this.context.stroke();
      const size = Math.min(Math.max(made.h * scale, 6), 40);
      if (start) this.head(start, screen[1], screen[0], size);
      if (end) this.head(end, screen[screen.length - 2], screen[screen.length - 1], size);
      if (ring) this.ring(screen[0], size / 2.5);
    }
  }

  // The end of a line that comes from `from` and points at `to`.
  head(kind, from, to, size) {
    const { context } = this;
    const length = Math.hypot(to[0] - from[0], to[1] - from[1]);
    const [dx, dy] =
      length > 0 ? [(to[0] - from[0]) / length, (to[1] - from[1]) / length] : [0, -1];
    const wing = (back, side) => [to[0] - dx * back - dy * side, to[1] - dy * back + dx * side];
    if (kind === "cross") {
      this.trace([wing(size / 2, size / 2), wing(-size / 2, -size / 2)], false);
      context.stroke();
      this.trace([wing(size / 2, -size / 2), wing(-size / 2, size / 2)], false);
      return context.stroke();
    }
    if (kind === "triangle") this.trace([wing(size, 0), wing(0, size / 2), wing(0, -size / 2)]);
    else this.trace([to, wing(size, size / 6), wing(size, -size / 6)]);
    return context.fill();
  }

  ring([x, y], radius) {
    this.context.beginPath();
    this.context.arc(x, y, radius, 0, 2 * Math.PI);
    this.context.stroke();
  }

  // Draws polylines of the model, such as lit edges.
  strokes(camera, polylines, color, width, dash = []) {
    const { context } = this;
    context.strokeStyle = color;
    context.lineWidth = width;
    context.setLineDash(dash);
    context.beginPath();
    for (const points of polylines) {
      let isOpen = false;
      for (let i = 0; i + 2 < points.length; i += 3) {
        const screen = camera.project([points[i], points[i + 1], points[i + 2]]);
        if (screen && isOpen) context.lineTo(...screen);
        else if (screen) context.moveTo(...screen);
        isOpen = screen !== null;
      }
    }
    context.stroke();
    context.setLineDash([]);
  }

  // Draws points of the model.
  dots(camera, points, color, radius) {
    const { context } = this;
    context.fillStyle = color;
    for (const point of points) {
      const screen = camera.project(point);
      if (!screen) continue;
      context.beginPath();
      context.arc(...screen, radius, 0, 2 * Math.PI);
      context.fill();
    }
  }

  // The annotation under a place in the picture; null for none.
  pick(x, y) {
    for (let i = this.hits.length - 1; i >= 0; --i) {
      const { annotation, corners } = this.hits[i];
      let inside = 0;
      corners.forEach(([x0, y0], k) => {
        const [x1, y1] = corners[(k + 1) % 4];
        inside += Math.sign((x1 - x0) * (y - y0) - (y1 - y0) * (x - x0));
      });
      if (Math.abs(inside) === 4) return annotation;
    }
    return null;
  }
};
