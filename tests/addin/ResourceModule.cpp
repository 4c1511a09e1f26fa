// Stands in for the resource module: it only has to be there and to load.
int g_resourceModuleIsThere = 1;
