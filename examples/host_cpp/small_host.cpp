#include <iostream>
#include <korv_lib_yang.hpp>

int main(int argc, char **argv)
{
    korv::Options options;
    options.directory = argc > 1 ? argv[1] : ".";
    auto lib = korv::Instance::start(options);
    if (auto module = lib->load("example-interfaces"); !module) {
        std::cout << module.text() << '\n';
        return 1;
    }
    if (auto found = lib->findAttribute(0x1001, 2))
        std::cout << "attribute 2 of class 0x1001 is " << found->leaf.name() << " of " << found->node.name() << '\n';
}
