#pragma once

#include "framework_core/KOVAIdentifier.h"
#include "framework_core/KOVAIdentifiers.h"

class ENTITY;

// The kinds of identifiers that the exporter hands out. Making one allocates nothing.

// Neither native object nor any name: the annotation set, and where other kinds start from.
KOVAIdentifier EmptyIdentifier();

// An annotation, by its PMI attribute or dimension.
KOVAIdentifier AnnotationIdentifier(ENTITY* annotation, KOVARepresentation* exporter);

// A view, by its plane; without one it is the null view.
KOVAIdentifier ViewIdentifier(ENTITY* plane, KOVARepresentation* exporter);

// A callout or a capture: only the native object.
KOVAIdentifier BareIdentifier(ENTITY* entity);

// The text of an annotation.
KOVAIdentifier TextIdentifier(ENTITY* annotation);

// A model entity that is not topology.
KOVAIdentifier OwnerIdentifier(ENTITY* owner, KOVARepresentation* exporter);

// Appends an identifier of a datum reference or of a zone modifier: native object and type name.
void AddDatumReference(void* reference, KOVAIdentifiers& identifiers);
void AddZoneModifier(void* modifier, KOVAIdentifiers& identifiers);

// Set the components of the caller's identifier that make it a leader, a datum reference frame, or
// a datum or datum target; its other components stay.
void BecomeLeader(void* leader, KOVAIdentifier& identifier);
void BecomeReferenceFrame(void* frame, KOVAIdentifier& identifier);
void BecomeAnnotation(ENTITY* annotation, KOVAIdentifier& identifier);

// Returns true if the identifier carries the leaders' type name.
bool IsLeader(const KOVAIdentifier& identifier);

// The native object as an entity, or null.
inline ENTITY* EntityOf(const KOVAIdentifier& identifier) {
  return static_cast<ENTITY*>(identifier.GetNativeObject());
}

// The native type name of kernel entities.
extern const char* const kEntityTypeName;
