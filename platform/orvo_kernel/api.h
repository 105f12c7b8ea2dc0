#pragma once

#include "orvo_kernel/errors.h"
#include "orvo_kernel/lists.h"
#include "orvo_kernel/model.h"

// The kernel's functions. Each answers by an outcome; a failed one has changed nothing, unless it
// says otherwise.

// Options that a call may be given; the plug-in gives none.
class api_options;

// Append the faces, edges or vertices of a topological entity to `list`, each once, in model order.
// Fail for any other entity.
outcome api_get_faces(ENTITY* entity, ENTITY_LIST& list, int traversal = 0,
                      api_options* options = nullptr);
outcome api_get_edges(ENTITY* entity, ENTITY_LIST& list, int traversal = 0,
                      api_options* options = nullptr);
outcome api_get_vertices(ENTITY* entity, ENTITY_LIST& list, int traversal = 0,
                         api_options* options = nullptr);

// Finds the first attribute of a name in the entity's chain; null when there is none, which is a
// success too. CAVEAT: a failed call may have set `attribute`.
outcome api_find_named_attribute(ENTITY* entity, const char* name, ATTRIB_GEN_NAME*& attribute,
                                 api_options* options = nullptr);

// Appends the members of a group to `members`.
outcome api_ct_return_ents(QENGROUP* group, ENTITY_LIST& members);

// Deletes the entities of `list` and empties it.
outcome api_del_entity_list(ENTITY_LIST& list, api_options* options = nullptr);

// Opens a bulletin board on this thread: entities made from now on are recorded.
void api_bb_begin(int nested);
// Closes the innermost board. When `result` is a failure, the entities made since its begin are
// deleted.
void api_bb_end(outcome& result, int nested, int stopLogging);
// Brings the model up to date with the open board. May raise a kernel exception.
void update_from_bb();

// Not 0 if the kernel logs its changes on this thread.
int logging_opt_on();
void set_logging(int on);
