// Reads the command configuration file CmdConfig.xml.
