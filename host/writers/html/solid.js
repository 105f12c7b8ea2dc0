"use strict";

// The part itself: shaded faces, black edges and dots at vertices that PMI applies to, drawn by WebGL. Throws where the browser has none.
Page.Solid = class {
  constructor(model, canvas) {
    this.model = model;
    this.renderer = new THREE.WebGLRenderer({
      canvas,
      antialias: true,
      alpha: true,
      preserveDrawingBuffer: true, // for printing, and for tests that look at the picture
    });
    this.renderer.setClearColor(0, 0);
    this.scene = new THREE.Scene();
    this.light = new THREE.DirectionalLight(0xffffff, 0.6);
    this.scene.add(this.light, this.light.target, new THREE.AmbientLight(0xffffff, 0.5));
    this.centre = model.box.centre();
    this.makeFaces();
    this.makeEdges();
    this.makeDots();
    this.clipping = null;
  }

  // Coordinates are taken from the middle of the part, so that single precision does.
  offset(points, i) {
    return points[i] - this.centre[i % 3];
  }

  makeFaces() {
    const faces = this.model.drawing.faces.filter((face) => face.triangles.length > 0);
    let points = 0;
    let corners = 0;
    for (const face of faces) {
      points += face.points.length;
      corners += face.triangles.length;
    }
    const positions = new Float32Array(points);
    const indices = new Uint32Array(corners);
    this.ranges = []; // of each face: its first triangle, point and how many points
    this.colors = new Float32Array(points);
    let at = 0;
    let corner = 0;
    for (const face of faces) {
      const first = at / 3;
      const range = {
        id: face.id,
        triangle: corner / 3,
        point: first,
        points: face.points.length / 3,
      };
      this.ranges.push(range);
      for (let i = 0; i < face.points.length; ++i) positions[at++] = this.offset(face.points, i);
      for (const index of face.triangles) indices[corner++] = first + index;
    }
    const geometry = new THREE.BufferGeometry();
    geometry.setAttribute("position", new THREE.BufferAttribute(positions, 3));
    geometry.setAttribute("color", new THREE.BufferAttribute(this.colors, 3));
    geometry.setIndex(new THREE.BufferAttribute(indices, 1));
    geometry.computeVertexNormals();
    const offset = { polygonOffset: true, polygonOffsetFactor: 1, polygonOffsetUnits: 1 };
    this.shaded = new THREE.MeshLambertMaterial({
      vertexColors: THREE.VertexColors,
      side: THREE.DoubleSide,
      ...offset,
    });
    this.touched = new THREE.MeshBasicMaterial({ side: THREE.DoubleSide });
    this.mesh = new THREE.Mesh(geometry, this.shaded);
    this.mesh.frustumCulled = false;
    // Behind a cut, the inside of the material in one plain colour.
    this.inside = new THREE.MeshBasicMaterial({ side: THREE.BackSide, ...offset });
    this.insideMesh = new THREE.Mesh(geometry, this.inside);
    this.insideMesh.visible = false;
    this.scene.add(this.mesh, this.insideMesh);
  }

  makeEdges() {
    // An edge of no face, such as supplemental geometry, is drawn fainter where there are faces.
    const { edges, faces } = this.model.drawing;
    const bounding = new Set(faces.flatMap((face) => face.edges));
    const isLoose = ({ id }) => faces.length > 0 && !bounding.has(id);
    this.lines = this.makeLines(edges.filter((edge) => !isLoose(edge)));
    this.loose = this.makeLines(edges.filter(isLoose));
  }

  makeLines(edges) {
    let segments = 0;
    for (const { points } of edges) segments += Math.max(0, points.length / 3 - 1);
    const positions = new Float32Array(segments * 6);
    let at = 0;
    for (const { points } of edges) {
      for (let i = 3; i + 2 < points.length; i += 3) {
        for (let k = i - 3; k < i + 3; ++k) positions[at++] = this.offset(points, k);
      }
    }
    const geometry = new THREE.BufferGeometry();
    geometry.setAttribute("position", new THREE.BufferAttribute(positions, 3));
    const lines = new THREE.LineSegments(geometry, new THREE.LineBasicMaterial());
    lines.frustumCulled = false;
    this.scene.add(lines);
    return lines;
  }

  makeDots() {
    const { drawing, entities } = this.model;
    this.vertices = drawing.vertices.filter(({ id }) => entities.has(id));
    const positions = this.vertices.flatMap(({ points }) =>
      points.map((_, i) => this.offset(points, i)),
    );
    const geometry = new THREE.BufferGeometry();
    geometry.setAttribute("position", new THREE.BufferAttribute(new Float32Array(positions), 3));
    this.dots = new THREE.Points(
      geometry,
      new THREE.PointsMaterial({ size: 5, sizeAttenuation: false }),
    );
    this.dots.frustumCulled = false;
    this.scene.add(this.dots);
  }

  // Colours as the style has them; `tint` names a face's.
  paint(theme, tint) {
    const colors = {};
    const rgb = (name) => (colors[name] = colors[name] || new THREE.Color(theme[name]));
    for (const { id, point, points } of this.ranges) {
      const { r, g, b } = rgb(tint(id));
      for (let i = 3 * point; i < 3 * (point + points); i += 3) {
        this.colors[i] = r;
        this.colors[i + 1] = g;
        this.colors[i + 2] = b;
      }
    }
    this.mesh.geometry.attributes.color.needsUpdate = true;
    this.lines.material.color.set(theme.edge);
    this.loose.material.color.set(theme.loose);
    this.dots.material.color.set(theme.edge);
    this.inside.color.set(theme.inside);
  }

  // Cuts away the side that the camera looks from: there is nothing else to see in a cut. Null for
  // no cut.
  clip(plane, camera) {
    let cut = null;
    const normal = plane && Page.unit(plane.normal, null);
    if (normal) {
      const turned = Page.dot(normal, camera.direction) < -1e-6 ? Page.scale(normal, -1) : normal;
      const point = Page.subtract(plane.point, this.centre);
      cut = new THREE.Plane(new THREE.Vector3(...turned), -Page.dot(turned, point));
    }
    this.clipping = cut;
    this.renderer.clippingPlanes = cut ? [cut] : [];
    this.shaded.side = cut ? THREE.FrontSide : THREE.DoubleSide;
    this.shaded.needsUpdate = true;
    this.insideMesh.visible = cut !== null;
  }

  // The same camera for three.js.
  threeCamera(camera) {
    const aspect = camera.width / camera.height;
    const size = this.model.size;
    const depth = camera.depthOf(this.centre);
    let made = null;
    if (camera.angle === 0) {
      const half = 1 / camera.zoom;
      made = new THREE.OrthographicCamera(
        -half * aspect,
        half * aspect,
        half,
        -half,
        depth - size,
        depth + size,
      );
    } else {
      const near = Math.max(depth - size, size / 1000);
      made = new THREE.PerspectiveCamera(
        camera.angle,
        aspect,
        near,
        Math.max(depth + size, 2 * near),
      );
    }
    const vector = (a) => new THREE.Vector3(...a);
    made.matrixAutoUpdate = false;
    made.matrix.makeBasis(
      vector(camera.right),
      vector(camera.up),
      vector(Page.scale(camera.direction, -1)),
    );
    made.matrix.setPosition(vector(Page.subtract(camera.eye, this.centre)));
    made.updateMatrixWorld(true);
    return made;
  }

  resize(width, height, ratio) {
    this.renderer.setPixelRatio(ratio);
    this.renderer.setSize(width, height, false);
  }

  render(camera) {
    const view = this.threeCamera(camera);
    const from = Page.along(
      Page.add(Page.scale(camera.right, -0.3), Page.scale(camera.up, 0.3)),
      camera.direction,
      -1,
    );
    this.light.position.set(...from);
    this.renderer.render(this.scene, view);
  }

  // What lies nearest under a place in the picture: the id of a vertex that PMI applies to, or of a
  // face; null for none.
  pick(camera, x, y) {
    const face = this.hit(camera, x, y);
    let nearest = 7; // pixels
    let id = face?.id ?? null;
    for (const vertex of this.vertices) {
      const screen = camera.project(vertex.points);
      const far = screen ? Math.hypot(screen[0] - x, screen[1] - y) : Infinity;
      if (far < nearest && this.isInSight(camera, vertex.points)) [nearest, id] = [far, vertex.id];
    }
    return id;
  }

  // Whether nothing of the part stands before a point of it.
  isInSight(camera, point) {
    const isCut = this.clipping?.distanceToPoint(this.relative(point)) < 0;
    const before = this.hit(camera, ...camera.project(point));
    return !isCut && !(before && before.depth < camera.depthOf(point) - this.model.size / 1000);
  }

  relative(point) {
    return new THREE.Vector3(...Page.subtract(point, this.centre));
  }

  // The nearest face under a place in the picture, and how far along the direction of sight.
  hit(camera, x, y) {
    const { origin, direction } = camera.ray(x, y);
    let start = Page.subtract(origin, this.centre);
    if (camera.angle === 0) {
      start = Page.along(start, direction, -Page.dot(start, direction) - 2 * this.model.size);
    }
    const vector = (a) => new THREE.Vector3(...a);
    const caster = new THREE.Raycaster(vector(start), vector(direction));
    this.mesh.material = this.touched; // from either side
    const hits = caster.intersectObject(this.mesh);
    this.mesh.material = this.shaded;
    const isThere = ({ point }) => !this.clipping || this.clipping.distanceToPoint(point) >= 0;
    const hit = hits.find(isThere);
    if (!hit) return null;
    const depth = camera.depthOf(Page.add([hit.point.x, hit.point.y, hit.point.z], this.centre));
    return { id: this.faceOf(hit.faceIndex), depth };
  }

  faceOf(triangle) {
    let low = 0;
    let high = this.ranges.length - 1;
    while (low < high) {
      const middle = (low + high + 1) >> 1;
      if (this.ranges[middle].triangle <= triangle) low = middle;
      else high = middle - 1;
    }
    return this.ranges[low].id;
  }
};
