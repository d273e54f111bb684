// A converter that has nothing to do: built as pdf2djvu.exe, so that what remains of a batch is what it costs
// to run one.

int main() {
    return 0;
}
