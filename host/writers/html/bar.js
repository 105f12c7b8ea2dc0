"use strict";

// The buttons over the picture and the list of saved views.
Page.Bar = class {
  constructor(viewer, captures) {
    this.viewer = viewer;
    const { element } = Page;
    const views = [
      ["Fit", "f", () => picture.fit(), "Take in the part and what stands beside it"],
      ["Front", "1", () => picture.fit([0, 1, 0], [0, 0, 1]), "Look along +Y"],
      ["Top", "2", () => picture.fit([0, 0, -1], [0, 1, 0]), "Look along -Z"],
      ["Right", "3", () => picture.fit([-1, 0, 0], [0, 0, 1]), "Look along -X"],
      [
        "Isometric",
        "4",
        () => picture.fit([-1, 1, -1], [0, 0, 1]),
        "Look from the upper front right",
      ],
    ];
    const { picture, state } = viewer;
    const { camera } = picture;
    const switches = [
      [
        "Perspective",
        "p",
        () => camera.angle > 0,
        (on) => camera.setPerspective(on),
        "Parallel or perspective",
      ],
      [
        "Turn texts",
        "t",
        () => state.turned,
        (on) => (state.turned = on),
        "Turn texts that are seen from behind, on edge or upside down towards the viewer",
      ],
      [
        "Large texts",
        "l",
        () => state.large,
        (on) => (state.large = on),
        "Show all texts large enough to read",
      ],
      [
        "Hidden",
        "h",
        () => viewer.showHidden,
        (on) => (viewer.showHidden = on),
        "Show annotations that are hidden in the model",
      ],
    ];
    this.keys = new Map();
    this.switches = [];
    const button = (name, key, press, title) => {
      this.keys.set(key, press);
      return element(
        "button",
        { type: "button", title: `${title} (${key})`, "aria-keyshortcuts": key, onclick: press },
        name,
      );
    };
    const bar = element("div", { class: "bar", role: "toolbar", "aria-label": "View" });
    for (const [name, key, press, title] of views) bar.append(button(name, key, press, title));
    for (const [name, key, isOn, set, title] of switches) {
      const press = () => {
        set(!isOn());
        viewer.mark();
      };
      const made = button(name, key, press, title);
      this.switches.push([made, isOn]);
      bar.append(made);
    }
    viewer.section.before(bar);
    this.makeCaptures(captures);
  }

  // The links to the drawn pictures become buttons that move the camera.
  makeCaptures(captures) {
    const { viewer } = this;
    this.captures = [];
    const make = (capture, name, show) =>
      Page.element(
        "button",
        { type: "button", dir: "auto", onclick: show, "data-capture": capture },
        name,
      );
    const all = make(null, "Whole part", () => viewer.showAll());
    this.captures.push([all, null]);
    const items = [all];
    for (const link of captures.querySelectorAll("[data-capture]")) {
      const capture = viewer.model.captures[Number(link.dataset.index)];
      const made = make(link.dataset.capture, link.textContent, () => viewer.showCapture(capture));
      made.dataset.index = link.dataset.index;
      made.title = `${capture.members.ids.length} annotations${capture.clippingPlane ? ", cut" : ""}`;
      this.captures.push([made, capture]);
      items.push(made);
    }
    const list = Page.element("ul", {}, ...items.map((item) => Page.element("li", {}, item)));
    captures.replaceChildren(captures.querySelector("h2") || "", list);
  }

  // Does what a key stands for; says whether it stands for something.
  press(key) {
    const act = this.keys.get(key.toLowerCase());
    if (act) act();
    return act !== undefined;
  }

  mark() {
    for (const [button, isOn] of this.switches) button.setAttribute("aria-pressed", isOn());
    for (const [button, capture] of this.captures) {
      const isShown = capture === this.viewer.capture;
      button.setAttribute("aria-pressed", isShown);
      button.toggleAttribute("data-chosen", isShown);
    }
  }
};
