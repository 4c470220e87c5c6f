// What several layer commands share: refreshing the layer state, freezing and thawing.
