#include <platen/gui_images.h>
#include <platen/gui_look.h>
#include <platen/gui_os.h>
#include <platen/gui_text.h>
#include <platen/gui_windows.h>
