#!/usr/bin/env python3
"""Reads a drawing with ezdxf, turns all its layers off and writes it: one row of compare.sh."""
import sys

import ezdxf

drawing = ezdxf.readfile(sys.argv[1])
for layer in drawing.layers:
    layer.off()
drawing.saveas(sys.argv[2])
