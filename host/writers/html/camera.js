"use strict";

// Where the part is seen from. As in the report: eye, direction and up are the model's; zoom is one
// over half the height of what is seen, of a perspective camera at the distance where the angle in
// degrees takes in just that; angle 0 is a parallel projection.
Page.Camera = class {
  constructor(box, changed) {
    this.box = box;
    this.changed = changed;
    this.width = 1; // of the picture, in pixels
    this.height = 1;
    this.angle = 0;
    this.set({ eye: [0, 0, 0], direction: [-1, 1, -1], up: [0, 0, 1], zoom: 1 });
  }

  set({ eye, direction, up, zoom, angle }) {
    const { along, cross, dot, unit } = Page;
    if (eye?.every(Number.isFinite)) this.eye = eye;
    if (direction) this.direction = unit(direction, [0, 1, 0]);
    if (up || direction) {
      const d = this.direction;
      const given = up || this.up;
      const across = unit(along(given, d, -dot(given, d)), null);
      // An up along the direction says nothing.
      this.up = across || unit(Math.abs(d[2]) < 0.9 ? along([0, 0, 1], d, -d[2]) : [0, 1, 0]);
      this.right = cross(d, this.up);
    }
    if (zoom > 0 && Number.isFinite(zoom)) this.zoom = zoom;
    if (angle !== undefined) this.angle = angle > 0 && angle < 170 ? angle : 0;
    this.changed();
  }

  // Of a perspective camera: the distance at which the zoom holds.
  reach() {
    return 1 / (this.zoom * Math.tan((this.angle * Math.PI) / 360));
  }

  // Pixels for a length of 1 at a distance along the direction; 0 behind the eye.
  scaleAt(depth) {
    const scale = (this.height / 2) * this.zoom;
    if (this.angle === 0) return scale;
    const reach = this.reach();
    return depth > reach / 1000 ? (scale * reach) / depth : 0;
  }

  depthOf(point) {
    return Page.dot(Page.subtract(point, this.eye), this.direction);
  }

  // Where a point stands in the picture, in pixels from the upper left; null behind the eye.
  project(point) {
    const offset = Page.subtract(point, this.eye);
    const scale = this.scaleAt(Page.dot(offset, this.direction));
    if (scale === 0) return null;
    return [
      this.width / 2 + Page.dot(offset, this.right) * scale,
      this.height / 2 - Page.dot(offset, this.up) * scale,
    ];
  }

  // The line of sight through a place in the picture.
  ray(x, y) {
    const across = (x - this.width / 2) / ((this.height / 2) * this.zoom);
    const upwards = (this.height / 2 - y) / ((this.height / 2) * this.zoom);
    const offset = Page.add(Page.scale(this.right, across), Page.scale(this.up, upwards));
    if (this.angle === 0) return { origin: Page.add(this.eye, offset), direction: this.direction };
    const direction = Page.along(offset, this.direction, this.reach());
    return { origin: this.eye, direction: Page.unit(direction, this.direction) };
  }

  // The point in the middle of the picture that is as far away as the middle of the part.
  pivot() {
    const depth = this.depthOf(this.box.centre());
    return Page.along(
      this.eye,
      this.direction,
      this.angle === 0 ? depth : Math.max(depth, this.reach() / 10),
    );
  }

  // Turns around the pivot by pixels that the pointer went.
  orbit(dx, dy) {
    const pivot = this.pivot();
    const depth = this.depthOf(pivot);
    const turn = (a) => Page.turn(Page.turn(a, this.up, -dx * 0.008), this.right, -dy * 0.008);
    const direction = turn(this.direction);
    const up = turn(this.up);
    this.set({ eye: Page.along(pivot, direction, -depth), direction, up });
  }

  // Moves the picture by pixels.
  pan(dx, dy) {
    const scale = this.scaleAt(this.angle === 0 ? 0 : this.depthOf(this.pivot()));
    const eye = Page.along(Page.along(this.eye, this.right, -dx / scale), this.up, dy / scale);
    this.set({ eye });
  }

  // Shows everything `factor` times as large, the place (x, y) of the picture staying where it is.
  zoomBy(factor, x = this.width / 2, y = this.height / 2) {
    const zoom = this.zoom * factor;
    const far = 100 * (this.box.size() || 1);
    if (!(zoom > 1 / far && zoom < 1e7 / far)) return;
    const half = (this.height / 2) * this.zoom;
    const moved = 1 - 1 / factor;
    let eye = Page.along(this.eye, this.right, ((x - this.width / 2) / half) * moved);
    eye = Page.along(eye, this.up, ((this.height / 2 - y) / half) * moved);
    if (this.angle > 0) eye = Page.along(eye, this.direction, this.reach() * moved);
    this.set({ eye, zoom });
  }

  // Takes in all points, from where the camera looks now.
  fit(points) {
    const box = new Page.Box();
    for (const point of points) {
      box.add([
        Page.dot(point, this.right),
        Page.dot(point, this.up),
        Page.dot(point, this.direction),
      ]);
    }
    if (box.isEmpty()) return;
    const [x, y, z] = box.centre();
    const [width, height] = Page.subtract(box.high, box.low);
    const aspect = this.width / this.height;
    const half = Math.max(height / 2, width / 2 / aspect, (this.box.size() || 1) / 1e4);
    const zoom = (this.angle > 0 ? 0.8 : 0.94) / half;
    const middle = Page.add(
      Page.add(Page.scale(this.right, x), Page.scale(this.up, y)),
      Page.scale(this.direction, z),
    );
    this.zoom = zoom;
    const distance = this.angle > 0 ? this.reach() : 2 * box.size() || 1;
    this.set({ eye: Page.along(middle, this.direction, -distance) });
  }

  // Parallel or perspective, the same part of the model in the picture.
  setPerspective(on) {
    if (on === this.angle > 0) return;
    const pivot = this.pivot();
    if (on) {
      this.angle = 30;
      this.set({ eye: Page.along(pivot, this.direction, -this.reach()) });
    } else {
      const zoom = (this.zoom * this.reach()) / this.depthOf(pivot);
      this.set({ zoom, angle: 0 });
    }
  }

  // Place, direction, up and zoom in ten digits, for the page's attribute.
  describe() {
    return [...this.eye, ...this.direction, ...this.up, this.zoom]
      .map((value) => String(Number(value.toPrecision(10))))
      .join(" ");
  }
};
