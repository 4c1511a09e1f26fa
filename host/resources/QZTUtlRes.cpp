// The add-in's resource module. The add-in needs it to be there and to load; its texts and dialogs
// are the host's business, so it holds nothing but what makes it a library.
extern const int kResourceModuleVersion;
const int kResourceModuleVersion = 1;
