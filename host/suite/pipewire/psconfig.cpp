// What a drawing shows of its pipe systems, and redrawing.
