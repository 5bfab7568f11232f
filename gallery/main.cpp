#include "gallery/gallery.h"

int main(int argc, char *argv[])
{
    return runGallery(argc, argv);
}
