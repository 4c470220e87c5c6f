// The specification of double-pipe fittings.
