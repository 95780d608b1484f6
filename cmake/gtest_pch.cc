// The source of the target that owns the precompiled GoogleTest header,
// which every test program reuses.
