// Shows every layer, system and object of a drawing again.
