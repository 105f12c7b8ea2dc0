"use strict";

// Pointer, wheel and keys over the picture. `camera` turns, moves and zooms; `act` has pick(x, y)
// for a click and key(event) for what is not the camera's.
Page.control = (viewer, camera, act) => {
  const pointers = new Map();
  let travelled = 0; // pixels since the first pointer went down: a click does not travel

  const place = (event) => {
    const bounds = viewer.getBoundingClientRect();
    return [event.clientX - bounds.left, event.clientY - bounds.top];
  };
  const isPart = (event) => event.target.closest("button, input, a, output") === null;

  viewer.addEventListener("pointerdown", (event) => {
    if (!isPart(event)) return;
    if (pointers.size === 0) travelled = 0;
    pointers.set(event.pointerId, place(event));
    viewer.setPointerCapture(event.pointerId);
  });

  viewer.addEventListener("pointermove", (event) => {
    const before = pointers.get(event.pointerId);
    if (!before) return;
    const now = place(event);
    const [dx, dy] = [now[0] - before[0], now[1] - before[1]];
    travelled += Math.hypot(dx, dy);
    if (travelled < 4) return;
    pointers.set(event.pointerId, now);
    if (pointers.size === 1) {
      if (event.shiftKey || event.buttons & 6) camera.pan(dx, dy);
      else camera.orbit(dx, dy);
    } else if (pointers.size === 2) {
      // Two fingers move and spread the picture between them.
      const [other] = [...pointers].filter(([id]) => id !== event.pointerId).map(([, at]) => at);
      const spread = (at) => Math.hypot(at[0] - other[0], at[1] - other[1]) || 1;
      camera.pan(dx / 2, dy / 2);
      camera.zoomBy(spread(now) / spread(before), (now[0] + other[0]) / 2, (now[1] + other[1]) / 2);
    }
  });

  const release = (event) => {
    const was = pointers.delete(event.pointerId);
    if (
      was &&
      event.type === "pointerup" &&
      pointers.size === 0 &&
      travelled < 4 &&
      event.button === 0
    ) {
      act.pick(...place(event));
    }
  };
  viewer.addEventListener("pointerup", release);
  viewer.addEventListener("pointercancel", release);
  viewer.addEventListener("contextmenu", (event) => {
    if (isPart(event)) event.preventDefault();
  });

  viewer.addEventListener(
    "wheel",
    (event) => {
      event.preventDefault();
      const lines = event.deltaMode === 1 ? event.deltaY * 30 : event.deltaY;
      const step = Math.max(-200, Math.min(200, lines));
      camera.zoomBy(Math.exp(-step * 0.0015), ...place(event));
    },
    { passive: false },
  );

  viewer.addEventListener("keydown", (event) => {
    if (event.target !== viewer || event.ctrlKey || event.altKey || event.metaKey) return;
    const move = event.shiftKey ? (x, y) => camera.pan(-x, -y) : (x, y) => camera.orbit(x, y);
    const moves = {
      ArrowLeft: [-20, 0],
      ArrowRight: [20, 0],
      ArrowUp: [0, -20],
      ArrowDown: [0, 20],
    };
    if (moves[event.key]) move(...moves[event.key]);
    else if (event.key === "+" || event.key === "=") camera.zoomBy(1.2);
    else if (event.key === "-") camera.zoomBy(1 / 1.2);
    else if (!act.key(event.key)) return;
    event.preventDefault();
  });
};
