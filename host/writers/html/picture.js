"use strict";

// The picture: the part by WebGL, the annotations on a canvas above it, and the camera. It shows
// what `state` says: visible, chosen, applied and datums are annotations, lit and litByDatum ids of
// entities, turned and large how texts are drawn. `drawn` is called after each picture with how many
// annotations it has.
Page.Picture = class {
  constructor(model, section, state, drawn) {
    this.model = model;
    this.section = section;
    this.state = state;
    this.drawn = drawn;
    const { element } = Page;
    const part = element("canvas", { class: "part" });
    const notes = element("canvas", { class: "notes" });
    section.replaceChildren(part, notes);
    section.tabIndex = 0;
    section.setAttribute("role", "application");
    section.setAttribute(
      "aria-label",
      "Picture of the part. Arrow keys turn it, with Shift they move it, plus and minus zoom.",
    );
    this.overlay = new Page.Overlay(model, notes);
    try {
      this.solid = new Page.Solid(model, part);
    } catch {
      // Without WebGL: the edges and annotations on the flat canvas, and the drawn pictures.
      this.solid = null;
      const text =
        "This browser draws no shaded faces (WebGL is missing). Drawn pictures stand below.";
      section.append(element("p", { class: "warning", role: "status" }, text));
    }
    this.camera = new Page.Camera(model.box, () => this.draw());
    this.readTheme();
    this.resize();
    this.listen();
  }

  listen() {
    new ResizeObserver(() => this.resize()).observe(this.section);
    const dark = window.matchMedia("(prefers-color-scheme: dark)");
    dark.addEventListener("change", () => this.readTheme());
    const print = (on) => () => {
      document.documentElement.toggleAttribute("data-printing", on);
      this.isPrinting = on;
      this.readTheme();
      this.drawNow();
    };
    window.addEventListener("beforeprint", print(true));
    window.addEventListener("afterprint", print(false));
  }

  // The colours, as the style has them for the reader's system.
  readTheme() {
    const style = getComputedStyle(document.documentElement);
    const names = "ink paper face edge loose inside chosen datum lit faceOfDatum".split(" ");
    this.theme = Object.fromEntries(
      names.map((name) => [name, style.getPropertyValue(`--${name}`).trim()]),
    );
    this.tint();
  }

  resize() {
    const { width, height } = this.section.getBoundingClientRect();
    if (width < 1 || height < 1) return;
    const ratio = Math.min(window.devicePixelRatio || 1, 3);
    this.camera.width = width;
    this.camera.height = height;
    this.solid?.resize(width, height, ratio);
    this.overlay.resize(width, height, ratio);
    this.drawNow();
  }

  // Takes in the part, the chosen annotation and the visible ones beside the part, from a direction
  // or from where the camera is. What stands farther off would make the part a dot.
  fit(direction, up) {
    const { model, overlay, state, camera } = this;
    if (direction) camera.set({ direction, up });
    const { low, high } = model.box;
    const points = [...Array(8).keys()].map((i) =>
      [0, 1, 2].map((k) => ((i >> k) & 1 ? high : low)[k]),
    );
    const isBeside = (point) =>
      point.every(
        (value, i) => value > low[i] - model.size / 3 && value < high[i] + model.size / 3,
      );
    for (const annotation of [...state.visible].slice(0, overlay.most)) {
      if (annotation.place) points.push(...overlay.extentOf(annotation).filter(isBeside));
    }
    if (state.chosen?.place) points.push(...overlay.extentOf(state.chosen));
    camera.fit(points);
  }

  // Takes the camera to where a saved view has it.
  follow({ camera, clippingPlane }) {
    if (camera) {
      const { origin, target, type, zoom } = camera;
      let angle = type === "perspective" ? camera.viewAngle : 0;
      if (type === "perspective" && !(angle > 0)) {
        const far = Page.length(Page.subtract(target, origin));
        angle = (360 / Math.PI) * Math.atan(1 / (zoom * far));
      }
      const direction = camera.viewDirection;
      this.camera.set({ eye: origin, direction, up: camera.viewDirectionNormal, zoom, angle });
    }
    this.solid?.clip(clippingPlane, this.camera);
  }

  // What is under a place: an annotation and the id of an entity; null where there is none.
  pick(x, y) {
    const entity = this.solid?.pick(this.camera, x, y) ?? null;
    return { annotation: this.overlay.pick(x, y), entity };
  }

  // Colours the faces anew and draws.
  tint() {
    const { lit, litByDatum } = this.state;
    const body = [...lit].some((id) => this.model.entities.get(id)?.kind === "body");
    const color = (id) => {
      if (body || lit.has(id)) return "lit";
      return litByDatum.has(id) ? "faceOfDatum" : "face";
    };
    this.solid?.paint(this.theme, color);
    this.draw();
  }

  draw() {
    if (this.isDrawing) return;
    this.isDrawing = true;
    requestAnimationFrame(() => this.drawNow());
  }

  drawNow() {
    this.isDrawing = false;
    const { camera, overlay, theme, model, state } = this;
    const { visible, chosen, lit, litByDatum, turned, large } = state;
    if (!visible || camera.width < 2) return;
    this.solid?.render(camera);
    const first = chosen?.place ? [chosen] : [];
    const shown = first.concat([...visible].filter((annotation) => annotation !== chosen));
    const colorOf = (annotation) => {
      if (annotation === chosen || state.applied.has(annotation)) return "chosen";
      return state.datums.has(annotation) ? "datum" : "ink";
    };
    // What WebGL has drawn is not printed by all browsers.
    const under = this.isPrinting ? this.solid?.renderer.domElement : null;
    const count = overlay.paint(camera, shown, { theme, turned, large, colorOf, under });
    const edges = model.drawing.edges.map(({ points }) => points);
    if (!this.solid) overlay.strokes(camera, edges, theme.edge, 1);
    overlay.strokes(camera, this.outlines(litByDatum), theme.datum, 1.5);
    overlay.strokes(camera, this.outlines(lit), theme.chosen, 2.5);
    overlay.strokes(camera, this.ties(), theme.chosen, 1, [6, 4]);
    overlay.dots(camera, this.points(litByDatum), theme.datum, 3.5);
    overlay.dots(camera, this.points(lit), theme.chosen, 4.5);
    this.drawn(count, first.length > 0 && !visible.has(chosen) ? 1 : 0);
  }

  // The polylines of edges, and of the edges around faces.
  outlines(ids) {
    const { faces, edges } = this.model;
    const found = new Set();
    for (const id of ids) {
      if (edges.has(id)) found.add(id);
      for (const edge of faces.has(id) ? faces.get(id).edges : []) found.add(edge);
    }
    return [...found].filter((id) => edges.has(id)).map((id) => edges.get(id).points);
  }

  // The points of vertices.
  points(ids) {
    const { vertices } = this.model;
    return [...ids].filter((id) => vertices.has(id)).map((id) => vertices.get(id).points);
  }

  // Lines from a chosen annotation without lines of its own to what it applies to.
  ties() {
    const { faces, edges, vertices } = this.model;
    const { chosen, lit } = this.state;
    if (!chosen?.place || chosen.data.leaders.some(({ head }) => head)) return [];
    if (chosen.data.dimension?.line) return [];
    const { at } = chosen.place;
    const ties = [];
    for (const id of [...lit].slice(0, 50)) {
      const { points } = faces.get(id) ?? edges.get(id) ?? vertices.get(id) ?? { points: [] };
      let best = null;
      let least = Infinity;
      for (let i = 0; i + 2 < points.length; i += 3) {
        const point = [points[i], points[i + 1], points[i + 2]];
        const far = Page.length(Page.subtract(point, at));
        if (far < least) [best, least] = [point, far];
      }
      if (best) ties.push([...at, ...best]);
    }
    return ties;
  }
};
