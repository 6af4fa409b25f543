// Declarations that the examples in the documentation comments need. scripts/check examples compiles them after it.
#ifndef QUILLMARSH_DOCS_EXAMPLE_CONTEXT_H
#define QUILLMARSH_DOCS_EXAMPLE_CONTEXT_H

#include <quillmarsh/host/host.h>
#include <quillmarsh/quillmarsh.h>

#include <cstdlib>
#include <iostream>

using namespace quillmarsh;

void Sample();

class MyApplicationDescriptor : public ApplicationPluginDescriptor
{
public:
    MyApplicationDescriptor();
    Application *CreateApplication() override;
};

/// An example that consists of statements becomes a member function of a class derived from this one.
struct ExampleContext
{
    struct Listener
    {
        void OnChanged(ExampleContext &);
    };

    Mouse &mouse;
    gui::Renderer &renderer;
    gui::Component &component;
    widgets::Panel &panel;
    gui::Component &ok;
    gui::Message &message;
    platform::Window &window;
    host::Session &session;
    float x;
    SharedOutputStream &shared;
    void const *address;
    string fileName;
    ObserverList<Listener> listeners_;
};

#endif
