// SPDX-License-Identifier: GPL-3.0-or-later
// Apps for pictures and films.
#include "sample/themes_english.h"

namespace veltrix::sample
{

namespace
{

constexpr QStringView photoNames[] = {
    u"{}: AI Photo Editor",
    u"{} Photo Editor & Collage",
    u"Collage Maker: {} Photo Grid",
    u"{}: Selfie & Photo Editor",
    u"Photo Editor – {}",
    u"{}: Photo & Video Editor",
    u"Remove Background – {} Cutout",
    u"{} Photo Enhancer AI",
    u"{}: Film Camera & Filters",
    u"Photo Editor & Filters: {}",
    u"{}: Face & Body Editor",
    u"Photo Collage: {} Layouts",
    u"{} Photo Editor Pro",
    u"Background Eraser: {}",
    u"Retro Photo Camera: {}",
    u"{}: Photo Editor, Effects",
    u"AI Photo Enhancer by {}",
    u"Passport Photo: {} ID Maker",
    u"{}: Makeup Photo Editor",
    u"Photo Editor Studio – {}",
    u"{} Photo Editor & Eraser",
    u"{} Vintage Photo Filters",
    u"{}: Photo Editor & Retouch",
    u"{}: Photo Editor & Layout",
    u"Cartoon Photo Editor: {}",
    u"{} Presets & Photo Filters",
    u"Film Camera Filter: {}",
    u"{}: Blur Photo Background",
    u"Photo Frames & Borders: {}",
    u"{} Photo Editor: Crop & Fix",
    u"Light & Shadow – {} Editor",
    u"{}: Photo Editor & Restore",
    u"Square Photo Editor: {}",
    u"{} Photo Editor: Add Text",
    u"Anime Photo Editor: {}",
    u"{} Photo Collage Grid",
    u"{}: RAW Camera, Photo Editor",
    u"Photo Editor Lab: {}",
    u"{} Remove BG & Photo Eraser",
    u"{}: Photo to Sketch",
    u"Photo Slideshow: {} Music",
    u"{} Retro Cam",
    u"Photo Editor Art – {}",
    u"ID Photo & Passport: {}",
    u"{}: Glitch Photo Editor",
    u"Photo Resizer: {}",
    u"{} Selfie Camera",
    u"Collage & Scrapbook: {}",
    u"{}: Neon Photo Editor",
    u"Instant Photo Frame: {}",
    u"{}: Double Exposure",
    u"Photo Color Splash: {}",
    u"{} Simple Photo Editor",
    u"Product Photo Editor: {}",
    u"{}: Black & White Photo",
    u"Photo Widget: {}",
    u"{} Photo Booth",
    u"Profile Photo Editor: {}",
    u"Stickers for Photos: {}",
    u"{}: Photo Watermark",
    u"Pet Photo Editor: {}",
    u"{} Quick Photo Editor",
    u"Stock Photos: {} Library",
    u"{}: Disposable Camera",
    u"Photo Cleaner: {}",
    u"{} Photo Editor for Sellers",
    u"Hair Color Photo Editor: {}",
    u"{}: Light Leaks",
    u"Food Photo Editor: {}",
    u"{} Batch Photo Editor",
    u"Passport Photo Booth: {}",
    u"{}: Film Grain",
    u"Meme Photo Editor – {}",
    u"{} Mirror Photo Effects",
    u"Macro Camera: {}",
    u"{}: Photo Map",
    u"Photo Compare: {}",
    u"{} Mini Photo Editor",
    u"Kids Photo Editor: {}",
    u"{}: Year in Photos",
};

constexpr QStringView photoTopics[] = {
    u"photo editor, picture editing, edit pictures, image editor",
    u"collage maker, photo grid, layout, scrapbook, mood board",
    u"film camera filter, analog film, film look, thirty five millimetre",
    u"retro photo, vintage filter, nineties camera, old camera",
    u"remove background, background eraser, cutout, transparent, change background",
    u"passport photo, id photo, visa picture, passport size",
    u"light leak effect, lens flare, sun rays, overlay",
    u"selfie, face retouch, beauty, skin smooth, makeup, body",
    u"photo frame, border, instant frame, white border, square fit",
    u"photo enhancer, upscale, unblur, restore, sharpen",
    u"text on photo, caption, fonts, quotes, watermark",
    u"stickers, emoji, doodle, meme",
    u"photo journal, memories, year in pictures, diary",
    u"resize, crop, compress, batch, straighten",
    u"presets, filters, tones, color grading, camera filter",
    u"slideshow, photo video, music, reel",
    u"object removal, eraser, clean up, retouch",
    u"camera, manual, raw, macro, night, exposure",
    u"grain filter, dust, noise, texture, film grain",
    u"cartoon, anime, sketch, painting, art, glitch, neon",
    u"blur, portrait, depth, bokeh, mirror",
};

constexpr QStringView videoNames[] = {
    u"{}: Video Editor & Maker", u"Video Editor: {} Cut & Trim",
    u"{} Slow Motion Video",     u"Reverse Video – {}",
    u"{}: Subtitles & Captions", u"Teleprompter: {}",
    u"{} Video Compressor",      u"Intro Maker: {}",
    u"{}: Stop Motion Studio",   u"Video to Audio: {}",
    u"{} Time-Lapse Camera",     u"Green Screen: {}",
};

constexpr QStringView videoTopics[] = {
    u"video editor, video maker, cut, trim, merge clips",
    u"slow motion, reverse, speed, time lapse, stop motion",
    u"subtitles, captions, teleprompter, script",
    u"compress video, convert, extract audio, crop video",
    u"intro, outro, transitions, effects, green screen",
    u"reel, vertical video, music video, slideshow",
};

} // namespace

Theme photoTheme()
{
    return {.id = ThemeId::Photo,
            .primary = Genre::PhotoAndVideo,
            .secondary = Genre::Lifestyle,
            .glyph = Glyph::Aperture,
            .topRatings = 6.2,
            .ratingsFall = 4.1,
            .paidShare = 0.08,
            .names = photoNames,
            .topics = photoTopics};
}

Theme videoTheme()
{
    return {.id = ThemeId::Video,
            .primary = Genre::PhotoAndVideo,
            .secondary = Genre::Productivity,
            .glyph = Glyph::Play,
            .topRatings = 6.0,
            .paidShare = 0.1,
            .names = videoNames,
            .topics = videoTopics};
}

} // namespace veltrix::sample
