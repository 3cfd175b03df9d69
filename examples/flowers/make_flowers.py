#!/usr/bin/env python3
"""Makes flowers.txt: 150 invented flowers of three invented kinds, 50 of each.

No flower was measured: a simple generator of numbers draws each feature from a small table of
weights, so the same file comes out everywhere. Kinds overlap, as they do in a meadow.
"""
FEATURES = {
    "petals": ("4", "5", "6", "8"),
    "stem": ("short", "middle", "tall"),
    "leaf": ("round", "narrow", "toothed"),
    "scent": ("none", "sweet"),
}
KINDS = {  # weights of the values, feature by feature
    "bellwort": ((1, 8, 1, 0), (7, 3, 0), (6, 3, 1), (8, 2)),
    "starling": ((0, 2, 7, 1), (1, 7, 2), (1, 8, 1), (3, 7)),
    "lantern": ((5, 1, 1, 3), (0, 3, 7), (1, 2, 7), (5, 5)),
}


def draw(state, weights):
    state = (state * 75 + 74) % 65537
    rest = state * sum(weights) // 65537
    for place, weight in enumerate(weights):
        if rest < weight:
            return state, place
        rest -= weight


state = 2026
print("\t".join([*FEATURES, "kind"]))
for row in range(150):
    kind = list(KINDS)[row % 3]
    fields = []
    for values, weights in zip(FEATURES.values(), KINDS[kind]):
        state, place = draw(state, weights)
        fields.append(values[place])
    print("\t".join([*fields, kind]))
