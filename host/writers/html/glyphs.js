"use strict";

// The standard's symbols (ASME Y14.5, ISO 1101, ISO 7083). The page holds them as strokes, since no
// font that everybody has holds them all.
Page.glyphs = (() => {
  const characteristics = {
    straightness: "⏤",
    flatness: "⏥",
    circularity: "○",
    cylindricity: "⌭",
    lineProfile: "⌒",
    surfaceProfile: "⌓",
    angularity: "∠",
    perpendicularity: "⟂",
    parallelism: "∥",
    position: "⌖",
    concentricity: "◎",
    coaxiality: "◎",
    symmetry: "⌯",
    circularRunout: "↗",
    totalRunout: "⌰",
  };

  // Words of the report as a drawing writes them. What is not here is written as words.
  const modifiers = {
    none: "",
    maximumMaterial: "Ⓜ",
    leastMaterial: "Ⓛ",
    regardlessOfFeatureSize: "Ⓢ",
    maximumMaterialReciprocity: "ⓂⓇ",
    leastMaterialReciprocity: "ⓁⓇ",
    projectedZone: "Ⓟ",
    freeState: "Ⓕ",
    tangentPlane: "Ⓣ",
    statisticalTolerance: "ST",
    unequallyDisposed: "Ⓤ",
    unilateralZone: "UZ",
    translation: "▷",
    commonZone: "CZ",
    majorDiameter: "MD",
    minorDiameter: "LD",
    pitchDiameter: "PD",
    anyCrossSection: "ACS",
    anyLongitudinalSection: "ALS",
    specificCrossSection: "SCS",
    point: "[PT]",
    straightLine: "[SL]",
    plane: "[PL]",
    contactingFeature: "[CF]",
    distanceVariable: "[DV]",
    orientationOnly: "><",
    maximumTolerance: "MAX",
    basic: "[BASIC]",
    boundary: "BOUNDARY",
    eachRadialElement: "EACH RADIAL ELEMENT",
  };
  const zones = { none: "", diametrical: "⌀", spherical: "S⌀", square: "□", radial: "R" };
  const sizes = {
    diameter: "⌀",
    sphericalDiameter: "S⌀",
    radius: "R",
    sphericalRadius: "SR",
    square: "□",
  };

  // The shape of a character that the page has strokes for: width and strokes (a capital is 100
  // high, y down from the foot of the line), filled or not, and the letter in a circle. Null for a
  // character of a font.
  const shapes = new Map();
  const shapeOf = (character) => {
    if (character < "\u0080") return null;
    if (!shapes.has(character)) shapes.set(character, read(character));
    return shapes.get(character);
  };
  const read = (character) => {
    const symbol = document.getElementById(`glyph-${character.codePointAt(0).toString(16)}`);
    const path = symbol?.querySelector("path");
    if (!path) return null;
    return {
      width: symbol.viewBox.baseVal.width / 100 - 0.1,
      path: new Path2D(path.getAttribute("d")),
      filled: path.getAttribute("fill") !== "none",
      letter: symbol.querySelector("text")?.textContent ?? "",
    };
  };

  return { characteristics, shapeOf, modifiers, zones, sizes };
})();
