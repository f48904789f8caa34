// The program that the precompiled header belongs to; nobody runs it.
int main() {
    return 0;
}
