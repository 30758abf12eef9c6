// Nothing of its own: it is compiled so that its headers are.
