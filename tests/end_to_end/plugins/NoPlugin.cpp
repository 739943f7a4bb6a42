/// A shared library like any other.
extern "C" __attribute__((visibility("default"))) int answerOfNoPlugin()
{
    return 42;
}
