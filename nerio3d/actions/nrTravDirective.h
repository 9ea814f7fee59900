// What a visit tells the traversal: go on, skip this node's children, or end
// the whole traversal. Combining two directives keeps the larger.
#pragma once

typedef int nrTravDirective;

enum nrTravDirectiveEnum { CONTINUE_TRAV = 0, PRUNE_TRAV = 1, STOP_TRAV = 2 };

inline nrTravDirective nrTravCombine(nrTravDirective a, nrTravDirective b) { return a > b ? a : b; }
