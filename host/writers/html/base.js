"use strict";

// What the other scripts share: vectors as arrays [x, y, z], texts and elements. Everything hangs on
// one object.
const Page = {};

Page.add = (a, b) => [a[0] + b[0], a[1] + b[1], a[2] + b[2]];
Page.subtract = (a, b) => [a[0] - b[0], a[1] - b[1], a[2] - b[2]];
Page.scale = (a, k) => [a[0] * k, a[1] * k, a[2] * k];
Page.dot = (a, b) => a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
Page.cross = (a, b) => [
  a[1] * b[2] - a[2] * b[1],
  a[2] * b[0] - a[0] * b[2],
  a[0] * b[1] - a[1] * b[0],
];
Page.length = (a) => Math.hypot(a[0], a[1], a[2]);
Page.along = (point, direction, k) => Page.add(point, Page.scale(direction, k));

// A vector of length 1, or the fallback where it has no direction.
Page.unit = (a, fallback) => {
  const length = Page.length(a);
  return length > 1e-12 && Number.isFinite(length) ? Page.scale(a, 1 / length) : fallback;
};

// `a` turned by an angle in radians around an axis of length 1.
Page.turn = (a, axis, angle) => {
  const c = Math.cos(angle);
  const turned = Page.add(Page.scale(a, c), Page.scale(Page.cross(axis, a), Math.sin(angle)));
  return Page.along(turned, axis, Page.dot(axis, a) * (1 - c));
};

// The middle value; undefined of none.
Page.median = (values) => values.sort((a, b) => a - b)[Math.floor(values.length / 2)];

// The least and greatest coordinates.
Page.Box = class {
  constructor() {
    this.low = [Infinity, Infinity, Infinity];
    this.high = [-Infinity, -Infinity, -Infinity];
  }
  add(point) {
    if (!point.every(Number.isFinite)) return;
    for (let i = 0; i < 3; ++i) {
      if (point[i] < this.low[i]) this.low[i] = point[i];
      if (point[i] > this.high[i]) this.high[i] = point[i];
    }
  }
  isEmpty() {
    return this.low[0] > this.high[0];
  }
  centre() {
    return this.isEmpty() ? [0, 0, 0] : Page.scale(Page.add(this.low, this.high), 0.5);
  }
  // Length of the diagonal.
  size() {
    return this.isEmpty() ? 0 : Page.length(Page.subtract(this.high, this.low));
  }
};

// A document's text as it may be shown: control characters and marks of writing direction become
// visible, so that nothing reorders what stands around it.
Page.clean = (text) =>
  String(text)
    .replace(/\r\n?/g, "\n")
    .replace(
      // biome-ignore lint/suspicious/noControlCharactersInRegex: they are what this is for
      /[\u0000-\u0008\u000b-\u001f\u007f-\u009f\u061c\u200e\u200f\u2028-\u202e\u2066-\u2069]/g,
      (c) => `<${c.charCodeAt(0).toString(16).toUpperCase().padStart(4, "0")}>`,
    );

// A number in as few digits as tell it: six decimals, or six digits of a small number; at least
// `decimals` of them.
Page.number = (value, decimals = 0) => {
  if (!Number.isFinite(value)) return "?";
  const size = Math.abs(value);
  if (size >= 1e15) return String(value);
  const most = size > 1e-12 && size < 0.1 ? Math.min(20, 5 - Math.floor(Math.log10(size))) : 6;
  let text = value.toFixed(most).replace(/\.?0+$/, "");
  const least = Math.min(most, decimals);
  const point = text.indexOf(".");
  if (least > 0 && (point < 0 || text.length - 1 - point < least)) text = value.toFixed(least);
  return /^-0(\.0*)?$/.test(text) ? text.slice(1) : text;
};

// "surfaceProfile" as "surface profile".
Page.words = (name) => String(name).replace(/[A-Z]/g, (c) => ` ${c.toLowerCase()}`);

// An element with attributes, properties that start with "on" as listeners, and children: elements
// or texts.
Page.element = (name, attributes = {}, ...children) => {
  const made = document.createElement(name);
  for (const [key, value] of Object.entries(attributes)) {
    if (key.startsWith("on")) made.addEventListener(key.slice(2), value);
    else if (value === true) made.setAttribute(key, "");
    else if (value !== false && value !== null && value !== undefined)
      made.setAttribute(key, value);
  }
  made.append(...children);
  return made;
};
