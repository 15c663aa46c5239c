/// Moving an office of plotter files: to other printers in place, or as a bundle to another
/// machine.
#pragma once

#include <platen/house_bundle.h>
#include <platen/house_move.h>
#include <platen/house_restore.h>
