extern "C" int somethingElse() { return 1; }
