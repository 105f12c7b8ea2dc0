"use strict";

// The list of all annotations: searching, filtering, and choosing by mouse and keyboard. The rows
// stand in the page; this shows and marks them.
Page.List = class {
  step = 500; // rows that are listed at once

  constructor(model, section, act) {
    this.model = model;
    this.section = section;
    this.act = act;
    this.annotationOf = new Map();
    for (const annotation of model.annotations) {
      if (annotation.row) this.annotationOf.set(annotation.row, annotation);
    }
    this.rows = [...section.querySelectorAll("[data-annotation]")]; // from the top
    for (const row of this.rows) row.tabIndex = -1; // may take the focus
    this.elementsOf = new Map(); // those that name an entity, by its id
    for (const element of section.querySelectorAll("[data-entity]")) {
      const { entity } = element.dataset;
      if (!this.elementsOf.has(entity)) this.elementsOf.set(entity, []);
      this.elementsOf.get(entity).push(element);
    }
    this.limit = this.step;
    this.marked = { chosen: null, applied: new Set(), visible: new Set() };
    this.tables = [...section.querySelectorAll("table[data-kind]")];
    for (const table of this.tables) table.setAttribute("role", "grid");
    this.makeTools();
    this.listen();
    this.setTabStop(this.rows[0]);
    this.search();
  }

  makeTools() {
    const { element } = Page;
    this.input = element("input", {
      type: "search",
      id: "search",
      placeholder: "Search",
      "aria-label": "Search the annotations",
      autocomplete: "off",
    });
    const options = this.tables.map((table) =>
      element(
        "option",
        { value: table.dataset.kind },
        table.caption ? table.caption.textContent : table.dataset.kind,
      ),
    );
    this.kind = element(
      "select",
      { id: "kind", "aria-label": "Kind of annotation" },
      element("option", { value: "" }, "All kinds"),
      ...options,
    );
    this.found = element("output", { id: "found", for: "search kind" });
    const tools = element("div", { class: "tools" }, this.input, this.kind, this.found);
    const more = () => {
      this.limit += this.step;
      this.search();
    };
    this.more = element("button", { type: "button", class: "more", onclick: more }, "List more");
    this.section.append(this.more);
    const heading = this.section.querySelector("h2");
    if (heading) heading.after(tools);
    else this.section.prepend(tools);
  }

  listen() {
    let timer = 0;
    this.input.addEventListener("input", () => {
      clearTimeout(timer);
      timer = setTimeout(() => this.searchAnew(), this.rows.length > 5000 ? 250 : 0);
    });
    this.kind.addEventListener("change", () => this.searchAnew());
    this.section.addEventListener("click", (event) => {
      const row = event.target.closest("[data-annotation]");
      if (row) this.act.chooseAnnotation(this.annotationOf.get(row));
    });
    this.section.addEventListener("keydown", (event) => this.key(event));
    this.section.addEventListener("focusin", (event) => {
      if (this.annotationOf.has(event.target)) this.setTabStop(event.target);
    });
  }

  key(event) {
    if (event.target === this.input && event.key === "ArrowDown") {
      event.preventDefault();
      const first = this.rows.find((row) => this.isShown(row));
      if (first) first.focus();
      return;
    }
    const row = event.target.closest("[data-annotation]");
    if (!row) return;
    const at = this.rows.indexOf(row);
    const step = { ArrowDown: 1, ArrowUp: -1 }[event.key];
    if (step) {
      let next = at + step;
      while (this.rows[next] && !this.isShown(this.rows[next])) next += step;
      if (this.rows[next]) this.rows[next].focus();
    } else if (event.key === "Home" || event.key === "End") {
      const shown = this.rows.filter((one) => this.isShown(one));
      shown[event.key === "Home" ? 0 : shown.length - 1].focus();
    } else if (event.key === "Enter" || event.key === " ") {
      this.act.chooseAnnotation(this.annotationOf.get(row));
    } else {
      return;
    }
    event.preventDefault();
  }

  // One row of the list is a stop of the tabulator key; the arrow keys go on from there.
  setTabStop(row) {
    if (this.stop) this.stop.tabIndex = -1;
    this.stop = row;
    if (row) row.tabIndex = 0;
  }

  isShown(row) {
    return !row.hidden && !row.closest("table").hidden;
  }

  textOf(annotation) {
    if (annotation.searched === undefined) {
      const { data, row } = annotation;
      annotation.searched = [row.textContent, data.id, data.kind, Page.kindNames[data.kind]]
        .join(" ")
        .toLowerCase();
    }
    return annotation.searched;
  }

  // Lists the rows that hold every word of the search, as many as the limit allows.
  search() {
    const words = this.input.value.toLowerCase().split(/\s+/).filter(Boolean);
    const kind = this.kind.value;
    const counts = new Map();
    let found = 0;
    for (const row of this.rows) {
      const annotation = this.annotationOf.get(row);
      const isFound =
        (kind === "" || kind === annotation.kind) &&
        words.every((word) => this.textOf(annotation).includes(word));
      if (isFound) ++found;
      const isListed = isFound && found <= this.limit;
      if (isListed) counts.set(annotation.kind, (counts.get(annotation.kind) ?? 0) + 1);
      if (row.hidden === isListed) row.hidden = !isListed;
    }
    for (const table of this.tables) table.hidden = !counts.has(table.dataset.kind);
    this.more.hidden = found <= this.limit;
    const listed = this.more.hidden ? "" : `, the first ${this.limit} of them listed`;
    this.found.textContent = `${found} of ${this.rows.length}${listed}`;
    if (this.stop && !this.isShown(this.stop)) {
      this.setTabStop(this.rows.find((row) => this.isShown(row)));
    }
  }

  // Starts a search from its first rows.
  searchAnew() {
    this.limit = this.step;
    this.search();
  }

  // Marks what the picture shows, what is chosen, and what applies to the chosen entity.
  mark({ visible, chosen, applied }) {
    const before = this.marked;
    if (visible !== before.visible) {
      for (const annotation of this.model.annotations) {
        annotation.row?.toggleAttribute("data-hidden", !visible.has(annotation));
      }
    }
    for (const { row } of before.applied) row?.removeAttribute("data-lit");
    for (const { row } of applied) row?.setAttribute("data-lit", "");
    for (const [annotation, isChosen] of [
      [before.chosen, false],
      [chosen, true],
    ]) {
      annotation?.row?.toggleAttribute("data-chosen", isChosen);
      annotation?.row?.setAttribute("aria-selected", isChosen);
    }
    this.marked = { visible, chosen, applied };
  }

  // Brings a row into sight.
  reveal(annotation) {
    const { row } = annotation;
    if (!row) return;
    if (!this.isShown(row)) {
      this.input.value = "";
      this.kind.value = "";
      this.searchAnew();
      row.hidden = false; // beyond the limit, too
      row.closest("table").hidden = false;
    }
    this.setTabStop(row);
    // Only the list is scrolled, not the page. Rows get their heights as they come into sight, so it
    // takes a few pictures.
    const place = (more) => {
      const bounds = row.getBoundingClientRect();
      const list = this.section.getBoundingClientRect();
      const top = list.top + this.input.parentElement.offsetHeight;
      const above = Math.min(0, bounds.top - top);
      const below = Math.max(0, Math.min(bounds.bottom - list.bottom, bounds.top - top));
      this.section.scrollTop += above + below;
      if (more > 0) requestAnimationFrame(() => place(more - 1));
    };
    place(5);
  }
};
