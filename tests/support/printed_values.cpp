// Values for debugger.sh, which stops where they all stand.
#include <quillmarsh/quillmarsh.h>

using namespace quillmarsh;

int main()
{
    vec3 const vector(1.5f, -2.0f, 0.1f);
    vec3 const &same = vector;
    quat const rotation(0.0f, 0.0f, 0.0f, 1.0f);
    color4b colour;
    colour.r = 1;
    colour.g = 2;
    colour.b = 3;
    colour.a = 255;
    mat2 const matrix(1.0f, 2.0f, 3.0f, 4.0f);
    wstring wide;
    for (unsigned short const unit : {0x47, 0xfc, 0xd83d, 0xde00})
        wide += unit;
    unsigned int const words[] = {1, 2, 3, 0xabcdef};
    UID const uid(words);
    NamedParameter const count("count", 7);
    NamedParameter const title("title", "a b");
    unsigned char bytes[12] = {};
    ImageBaseFromExternalStorageAdapter image(e_format_L8);
    image.SetExternalStorage(bytes, 3, 4);
    ImageBase const &base = image;
    return image.GetNumRows() == base.GetNumRows() && same.x == vector.x ? 0 : 1; // stop here
}
