"use strict";

// What the page has about the chosen annotation or entity. `act` has chooseAnnotation(annotation),
// chooseEntity(id), lookAt(annotation) and clear().
Page.Details = class {
  constructor(model, section, act) {
    this.model = model;
    this.section = section;
    this.act = act;
    this.clear();
  }

  clear() {
    this.section.replaceChildren(
      Page.element("h2", {}, "Details"),
      Page.element(
        "p",
        {},
        "Choose an annotation in the list or in the picture, or a face of the part. Escape clears the choice.",
      ),
    );
  }

  titleOf({ data }) {
    const type = data.tolerance?.type || data.dimension?.type;
    const name = type ? Page.words(type) : (Page.kindNames[data.kind] ?? data.kind);
    const title = name[0].toUpperCase() + name.slice(1);
    const label = data.datum || data.datumTarget;
    return label ? `${title} ${Page.clean(label.label ?? "?")}` : title;
  }

  // A button that chooses an annotation.
  reference(annotation, text) {
    const name = annotation.data.name ? ` ${Page.clean(annotation.data.name)}` : "";
    return Page.element(
      "button",
      {
        type: "button",
        dir: "auto",
        "data-refers": annotation.key,
        onclick: () => this.act.chooseAnnotation(annotation),
      },
      text ?? this.titleOf(annotation) + name,
    );
  }

  entity({ kind, id, label }) {
    const text = Page.clean(kind + (label === null ? "" : ` ${label}`));
    if (id === null) return Page.element("span", { dir: "auto" }, text);
    return Page.element(
      "button",
      { type: "button", dir: "auto", "data-entity": id, onclick: () => this.act.chooseEntity(id) },
      text,
    );
  }

  list(items) {
    return Page.element("ul", {}, ...items.map((item) => Page.element("li", {}, ...[item].flat())));
  }

  part(heading, ...content) {
    return Page.element("section", {}, Page.element("h3", {}, heading), ...content);
  }

  showAnnotation(annotation, theme) {
    const { data } = annotation;
    const { element, clean } = Page;
    const children = [element("h2", {}, this.titleOf(annotation))];
    if (data.name) children.push(element("p", { class: "name", dir: "auto" }, clean(data.name)));
    const buttons = [
      element("button", { type: "button", onclick: () => this.act.clear() }, "Clear"),
    ];
    if (annotation.place) {
      const look = () => this.act.lookAt(annotation);
      buttons.unshift(element("button", { type: "button", onclick: look }, "Look at it"));
      children.push(this.drawn(annotation, theme));
    } else {
      children.push(
        this.drawn(annotation, theme),
        element("p", {}, "It has no place in the picture."),
      );
    }
    children.push(element("p", { class: "buttons" }, ...buttons));
    if (data.hidden) children.push(element("p", {}, "It is hidden in the model."));
    const skipped = this.model.report.source.skipped.filter(
      (entry) => entry.annotation !== null && entry.annotation === data.id,
    );
    const said = Page.sentences(data, this.model.unit);
    for (const { kind, reason } of skipped) {
      if (kind === "Angle") said.push(`Its basic angle: ${clean(reason)}.`);
    }
    for (const sentence of said) children.push(element("p", { dir: "auto" }, sentence));
    if (data.entities.length > 0) {
      const heading = data.tolerance ? "Controls" : "Applies to";
      children.push(this.part(heading, this.list(data.entities.map((one) => this.entity(one)))));
    } else {
      children.push(element("p", {}, "The report names no face or edge that it applies to."));
    }
    children.push(...this.datums(data), ...this.findings(data));
    const folded = (heading, content) =>
      children.push(element("details", {}, element("summary", {}, heading), content));
    folded("All values", this.values(data));
    if (skipped.length > 0) folded("Missing in the report", this.skipped(skipped));
    this.section.replaceChildren(...children);
    this.section.scrollTop = 0;
  }

  // The datums that a tolerance refers to, in their order, with what they are; of a datum its
  // targets, and what refers to it.
  datums(data) {
    const parts = [];
    for (const [i, row] of (data.tolerance ? data.tolerance.rows : []).entries()) {
      const references = row.frame ? row.frame.references : [];
      if (references.length === 0) continue;
      const items = references.map(({ label, datums }) => {
        if (datums.length === 0) return Page.clean(label ?? "?");
        return datums.flatMap((datum) => {
          const found = datum.id === null ? [] : this.model.byId(datum.id);
          const text = `datum ${Page.clean(datum.label ?? "?")}`;
          if (found.length === 0) return [text];
          const entities = found[0].data.entities.map((one) => this.entity(one));
          return [this.reference(found[0], text), ...entities];
        });
      });
      const which = data.tolerance.rows.length > 1 ? `, row ${i + 1}` : "";
      const list = Page.element(
        "ol",
        {},
        ...items.map((item) => Page.element("li", {}, ...[item].flat())),
      );
      parts.push(this.part(`Against datums${which}`, list));
    }
    if (data.datum) {
      const targets = data.datum.targetIds.flatMap((id) =>
        id === null ? [] : this.model.byId(id),
      );
      if (targets.length > 0)
        parts.push(this.part("Targets", this.list(targets.map((one) => this.reference(one)))));
      const users = this.model.annotations.filter(({ data: other }) =>
        (other.tolerance ? other.tolerance.rows : []).some((row) =>
          (row.frame ? row.frame.references : []).some(({ datums }) =>
            datums.some(({ id }) => id !== null && id === data.id),
          ),
        ),
      );
      if (users.length > 0) {
        const shown = users.slice(0, 200).map((one) => this.reference(one));
        parts.push(this.part("Named by", this.list(shown)));
      }
    }
    return parts;
  }

  // What the rules found of an annotation.
  findings(data) {
    const items = this.model
      .findingsOf(data)
      .map(({ rule, severity, message, title, advice }) =>
        this.judged(severity, `${severity} ${rule}, ${title}: ${message}. To do: ${advice}`),
      );
    return items.length > 0
      ? [this.part("Found by the rules", Page.element("ul", {}, ...items))]
      : [];
  }

  // What of an annotation the report has not.
  skipped(entries) {
    const items = entries.map(({ severity, kind, reason, line, count }) =>
      this.judged(
        severity,
        `${severity}: ${kind}: ${reason}${line ? `, line ${line}` : ""}${count > 1 ? `, ${count} times` : ""}`,
      ),
    );
    return Page.element("ul", {}, ...items);
  }

  judged(severity, text) {
    return Page.element("li", { "data-severity": severity, dir: "auto" }, Page.clean(text));
  }

  // The annotation as it is drawn, flat.
  drawn(annotation, theme) {
    const h = 12;
    const { ops, whole } = Page.layout(annotation, h);
    const canvas = Page.element("canvas", { class: "drawn", "aria-hidden": "true" });
    if (ops.length === 0) return canvas;
    const pad = 4;
    const width = Math.min(2000, whole[2] - whole[0] + 2 * pad);
    const height = Math.min(2000, whole[3] - whole[1] + 2 * pad);
    canvas.style.width = `${width}px`;
    const overlay = new Page.Overlay(this.model, canvas);
    overlay.resize(width, height, window.devicePixelRatio || 1);
    const { context } = overlay;
    context.setTransform(overlay.screen);
    context.strokeStyle = context.fillStyle = theme.ink;
    const frame = { origin: [pad - whole[0], whole[3] + pad], x: [1, 0], y: [0, -1] };
    for (const op of ops) overlay.paintOp(op, frame);
    return canvas;
  }

  showEntity(id, annotations) {
    const { element, clean } = Page;
    const entity = this.model.entities.get(id);
    const kind = entity ? entity.kind : this.model.edges.has(id) ? "edge" : "face";
    const label = entity && entity.label !== null ? entity.label : id;
    const title = `${kind[0].toUpperCase() + kind.slice(1)} ${clean(label)}`;
    const children = [
      element("h2", { dir: "auto" }, title),
      element("p", {}, `Id ${clean(id)}`),
      element(
        "p",
        { class: "buttons" },
        element("button", { type: "button", onclick: () => this.act.clear() }, "Clear"),
      ),
    ];
    if (annotations.length === 0) {
      children.push(element("p", {}, "Nothing in the report applies to it by name."));
    } else {
      children.push(
        this.part("What applies to it", this.list(annotations.map((one) => this.reference(one)))),
      );
    }
    this.section.replaceChildren(...children);
    this.section.scrollTop = 0;
  }

  // Everything that the report has of it, key by key.
  values(data) {
    const { element, clean, words } = Page;
    if (data === null) return "–";
    if (typeof data !== "object") return element("span", { dir: "auto" }, clean(data));
    if (Array.isArray(data) && data.every((one) => typeof one !== "object")) {
      return element("span", { dir: "auto" }, data.length > 0 ? clean(data.join(", ")) : "none");
    }
    const made = element("dl", {});
    for (const [key, value] of Object.entries(data)) {
      const name = Array.isArray(data) ? String(Number(key) + 1) : words(key);
      made.append(element("dt", {}, name), element("dd", {}, this.values(value)));
    }
    return made;
  }
};
