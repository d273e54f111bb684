#include "ui/sized_icon.h"

#include "framework/app_module.h"

UniqueIcon LoadSizedIcon(UINT id, int width, int height) {
    return UniqueIcon(
        static_cast<HICON>(::LoadImageW(CAppModule::Instance().ResourceInstance(), MAKEINTRESOURCEW(id),
                                        IMAGE_ICON, width, height, LR_DEFAULTCOLOR)));
}
