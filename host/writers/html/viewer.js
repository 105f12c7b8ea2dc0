"use strict";

// The page's state and what follows from it: the picture, the marks in the list, the details. The
// state stands as attributes at #viewer and at the elements that name annotations, captures and
// entities.
Page.Viewer = class {
  constructor() {
    this.model = Page.readReport();
    this.section = document.getElementById("viewer");
    this.capture = null; // of the report; null for none
    this.entity = null; // the id of the chosen one
    this.showHidden = false;
    const nothing = new Set();
    this.state = {
      visible: null,
      chosen: null,
      applied: nothing,
      datums: nothing,
      lit: nothing,
      litByDatum: nothing,
      turned: true,
      large: false,
    };
    const act = {
      chooseAnnotation: (annotation) => this.chooseAnnotation(annotation),
      chooseEntity: (id) => this.chooseEntity(id),
      lookAt: ({ place }) => this.picture.fit(Page.scale(place.normal, -1), place.y),
      clear: () => this.clear(),
      pick: (x, y) => this.pick(x, y),
      key: (key) => this.bar.press(key),
    };
    this.list = new Page.List(this.model, document.getElementById("list"), act);
    document.documentElement.dataset.state = "making"; // everything has its place from now on
    this.picture = new Page.Picture(this.model, this.section, this.state, (drawn, more) =>
      this.tell(drawn, more),
    );
    this.status = Page.element("output", { class: "status" });
    this.section.append(this.status);
    this.details = new Page.Details(this.model, document.getElementById("details"), act);
    this.bar = new Page.Bar(this, document.getElementById("captures"));
    Page.control(this.section, this.picture.camera, act);
    this.shortenAccount();
    this.listenToFindings();
    document.addEventListener("keydown", (event) => {
      if (event.key === "Escape") this.clear();
    });
    // The first saved view that has annotations and does not show the part as a dot.
    const isTelling = ({ camera, members }) =>
      members.ids.length > 0 && camera && camera.zoom * this.model.size > 0.2;
    const first = this.model.captures.find(isTelling);
    if (first) this.showCapture(first);
    else this.showAll();
    this.picture.resize();
  }

  // What a finding is about is a link: to its row without script, here to the picture and details.
  listenToFindings() {
    const { annotations, captures } = this.model;
    document.getElementById("findings")?.addEventListener("click", (event) => {
      const link = event.target.closest("a");
      if (!link) return;
      const { place, view } = link.dataset;
      if (view) this.showCapture(captures[Number(view)]);
      else this.chooseAnnotation(annotations.find(({ index }) => index === place));
      event.preventDefault();
      document.querySelector("main").scrollIntoView();
    });
  }

  // Tables of findings and of the account show their first 500 rows until the others are asked for.
  shortenAccount() {
    for (const table of document.querySelectorAll("#account table, #findings table")) {
      const { length } = table.tBodies[0]?.rows ?? [];
      if (length <= 500) continue;
      const show = ({ target }) => {
        table.setAttribute("data-all", "");
        target.remove();
      };
      table.after(Page.element("button", { type: "button", onclick: show }, `List all ${length}`));
    }
  }

  // --- What the reader can do ---

  showCapture(capture) {
    this.capture = capture;
    this.picture.follow(capture);
    this.mark();
  }

  showAll() {
    this.capture = null;
    this.picture.follow({ camera: null, clippingPlane: null });
    this.mark();
    this.picture.fit([-1, 1, -1], [0, 0, 1]);
  }

  choose(annotation, entity) {
    this.state.chosen = annotation;
    this.entity = entity;
    this.mark();
  }

  chooseAnnotation(annotation) {
    this.choose(annotation, null);
    this.details.showAnnotation(annotation, this.picture.theme);
    this.markEntities();
    this.list.reveal(annotation);
  }

  chooseEntity(id) {
    this.choose(null, id);
    this.details.showEntity(id, [...this.state.applied]);
    this.markEntities();
  }

  clear() {
    this.choose(null, null);
    this.details.clear();
  }

  // A second click on an annotation reaches what is under it; one beside the part, or through a hole
  // of it, changes nothing.
  pick(x, y) {
    const { annotation, entity } = this.picture.pick(x, y);
    if (annotation && annotation !== this.state.chosen) this.chooseAnnotation(annotation);
    else if (entity !== null) this.chooseEntity(entity);
  }

  // --- What follows ---

  // The annotations in the picture: a saved view's members; else those that are not hidden.
  annotationsInView() {
    const { annotations } = this.model;
    if (this.capture) {
      const ids = new Set(this.capture.members.ids);
      return annotations.filter(({ data }) => data.id !== null && ids.has(data.id));
    }
    return annotations.filter(({ data }) => this.showHidden || !data.hidden);
  }

  // The entities that the chosen annotation applies to, the datums it names and their entities; or
  // the chosen entity and what applies to it.
  lightUp() {
    const { byId, entities } = this.model;
    const { chosen } = this.state;
    const lit = new Set(this.entity === null ? [] : [this.entity]);
    for (const { id } of chosen?.data.entities ?? []) if (id !== null) lit.add(id);
    const withId = (id) => (id === null ? [] : byId(id));
    const references = (chosen?.data.tolerance?.rows ?? [])
      .flatMap(({ frame }) => frame?.references ?? [])
      .flatMap(({ datums }) => datums);
    const datums = new Set(references.flatMap(({ id }) => withId(id)));
    const ofDatums = [...datums].flatMap(({ data }) => data.entities.map(({ id }) => id));
    const applied = entities.get(this.entity)?.annotations ?? [];
    Object.assign(this.state, {
      lit,
      datums,
      litByDatum: new Set(ofDatums.filter((id) => id !== null && !lit.has(id))),
      applied: new Set(applied.flatMap(withId)),
    });
  }

  // Takes a change to the picture and to all elements that show the state.
  mark() {
    const shows = this.capture ?? this.showHidden;
    if (this.state.visible === null || shows !== this.shows) {
      this.shows = shows;
      this.state.visible = new Set(this.annotationsInView());
      this.hidden = this.capture
        ? []
        : this.model.annotations.filter((one) => !this.state.visible.has(one));
      this.placed = [...this.state.visible].filter(({ place }) => place).length;
    }
    this.lightUp();
    this.list.mark(this.state);
    this.bar.mark();
    this.markEntities();
    this.picture.tint();
  }

  // Marks the elements that name lit entities.
  markEntities() {
    for (const element of this.marked ?? []) element.removeAttribute("data-lit");
    const { lit } = this.state;
    const details = [...document.querySelectorAll("#details [data-entity]")];
    this.marked = [...lit]
      .flatMap((id) => this.list.elementsOf.get(id) ?? [])
      .concat(details.filter(({ dataset }) => lit.has(dataset.entity)));
    for (const element of this.marked) element.setAttribute("data-lit", "");
  }

  // Says what the picture shows.
  tell(drawn, more) {
    const { dataset } = this.section;
    const { camera, solid } = this.picture;
    const { chosen, lit, litByDatum } = this.state;
    let text = `${drawn} of ${this.placed + more} annotations drawn`;
    const { length } = this.hidden;
    if (length > 0) text += `, ${length} hidden in the model`;
    if (this.status.textContent !== text) this.status.textContent = text;
    dataset.camera = camera.describe();
    dataset.projection = camera.angle > 0 ? "perspective" : "parallel";
    dataset.capture = this.capture?.id ?? "";
    dataset.chosen = chosen?.key ?? "";
    dataset.picked = this.entity ?? "";
    dataset.lit = [...lit].join(" ");
    dataset.datums = [...litByDatum].join(" ");
    document.documentElement.dataset.state = solid ? "ready" : "pictures";
  }
};

try {
  Page.viewer = new Page.Viewer();
} catch (problem) {
  // The page stays as it is without script.
  delete document.documentElement.dataset.state;
  throw problem;
}
