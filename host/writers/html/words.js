"use strict";

// What an annotation says, in sentences for somebody who can't read its symbols.
Page.sentences = (() => {
  const { number, words, clean } = Page;

  const characteristics = {
    straightness: "Lines of it must be straight",
    flatness: "It must be flat",
    circularity: "Every cross-section of it must be round",
    cylindricity: "It must be cylindrical",
    lineProfile: "Every section of it must keep to its nominal line",
    surfaceProfile: "It must keep to its nominal surface",
    angularity: "It must keep its angle",
    perpendicularity: "It must be perpendicular",
    parallelism: "It must be parallel",
    position: "It must be where the model has it",
    concentricity: "Its median points must be on the datum axis",
    coaxiality: "Its axis must be the datum's",
    symmetry: "Its median points must be on the datum's middle",
    circularRunout: "Every circle of it must run true when turned about the datum axis",
    totalRunout: "All of it must run true when turned about the datum axis",
  };
  const conditions = {
    maximumMaterial:
      "at maximum material condition: the more it departs from that, the more is allowed",
    leastMaterial:
      "at least material condition: the more it departs from that, the more is allowed",
    regardlessOfFeatureSize: "whatever its size",
    projectedZone: "in a zone that stands out of the part",
    freeState: "in free state, not clamped",
    tangentPlane: "held by the plane that touches it",
    statisticalTolerance: "under statistical process control",
    unequallyDisposed: "with so much of the zone outside the material",
    commonZone: "with one common zone",
    maximumTolerance: "at most",
  };
  const boundaries = {
    maximumMaterial: "at its maximum material boundary",
    leastMaterial: "at its least material boundary",
  };
  const order = ["first", "second", "third"];
  const zones = {
    diametrical: "a cylinder or circle of diameter ",
    spherical: "a sphere of diameter ",
  };

  const modifier = ({ type, magnitude }, unit) =>
    (conditions[type] ?? words(type ?? "unknown modifier")) +
    (magnitude === null ? "" : ` ${number(magnitude)}${unit}`);

  const row = (data, unit, type, i, count) => {
    const name = words(type ?? "tolerance");
    const place = count > 1 ? `Row ${i + 1}: ` : "";
    const amount = data.magnitude === null ? "an unknown width" : number(data.magnitude) + unit;
    const zone = (zones[data.valueType] ?? "a zone of width ") + amount;
    let text = `${place}${count > 1 ? name : name[0].toUpperCase() + name.slice(1)} within ${zone}`;
    const conditionsOfRow = data.modifiers.filter(({ type: one }) => one !== "none");
    if (conditionsOfRow.length > 0) {
      text += `, ${conditionsOfRow.map((one) => modifier(one, unit)).join(", ")}`;
    }
    if (data.refinement) text += `; refined to ${number(data.refinement)}${unit}`;
    if (data.rateUnit1) {
      text += ` over each ${number(data.rateUnit1)}${data.rateUnit2 ? ` × ${number(data.rateUnit2)}` : ""}${unit}`;
    }
    const references = data.frame ? data.frame.references : [];
    const datums = references.map(({ label, datums: list }, k) => {
      const texts = list.map((datum) =>
        [
          clean(datum.label ?? "?"),
          ...datum.modifiers.map((one) => boundaries[one.type] ?? modifier(one, unit)),
        ].join(" "),
      );
      const which = references.length > 1 ? `${order[k] ?? "further"} to` : "to";
      return `${which} ${texts.join(" with ") || clean(label ?? "?")}`;
    });
    text +=
      datums.length > 0
        ? `. The part is held ${datums.join(", ")}.`
        : ". No datum: it is measured by itself.";
    return text;
  };

  const dimension = (data, unit) => {
    const isAngle = data.mainType === "angular" || data.type === "angularCoordinate";
    const measure = isAngle ? "°" : unit;
    const { value, upper, lower } = data;
    const show = (amount) => number(amount) + measure;
    const said = [];
    const name = words(data.type ?? "dimension");
    if (value !== null) said.push(`Nominal ${name}: ${show(value)}.`);
    if (data.tolerance === "basic")
      said.push("Theoretically exact: tolerances elsewhere say how far it may be off.");
    if (data.tolerance === "reference") said.push("For information; it is not to be checked.");
    if (data.tolerance === "none") said.push("No tolerance is stated here.");
    const from = value ?? 0;
    if (lower !== null && upper !== null)
      said.push(`Allowed: ${show(from + lower)} to ${show(from + upper)}.`);
    else if (upper !== null) said.push(`Allowed: up to ${show(from + upper)}.`);
    else if (lower !== null) said.push(`Allowed: from ${show(from + lower)}.`);
    return said;
  };

  const obtentions = {
    machiningMandatory: "Material must be removed to get the surface.",
    machiningForbidden: "No material may be removed.",
  };
  const surfaces = { allPartSurfaces: "For all surfaces of the part." };

  return (data, unitName) => {
    const unit = unitName ? ` ${unitName}` : "";
    if (data.tolerance) {
      const { type, rows, allAround } = data.tolerance;
      const said = [];
      if (characteristics[type]) said.push(`${characteristics[type]}.`);
      for (const [i, one] of rows.entries()) said.push(row(one, unit, type, i, rows.length));
      if (allAround) said.push("It holds all around.");
      return said;
    }
    if (data.dimension) return dimension(data.dimension, unit);
    if (data.datum)
      return [`Tolerances that name ${clean(data.datum.label ?? "?")} are measured from it.`];
    if (data.kind === "text" || data.kind === "flagNote") {
      return data.texts.some(({ string }) => string) ? [] : ["The report has no text of it."];
    }
    if (data.datumTarget) return ["A place where the datum is set up."];
    if (data.roughness) {
      const { obtention, applicability } = data.roughness;
      return [obtentions[obtention], surfaces[applicability]].filter(Boolean);
    }
    return [];
  };
})();

Page.kindNames = {
  datum: "Datum",
  datumTarget: "Datum target",
  geometricTolerance: "Tolerance",
  dimension: "Dimension",
  roughness: "Surface texture",
  text: "Note",
  flagNote: "Flag note",
  unknown: "Annotation",
};
