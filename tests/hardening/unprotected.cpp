// A program that is built without any protection, on purpose.
int main() { return 0; }
