// CString.
