// Reads the double-pipe fitting specification file SpecData.xml.
