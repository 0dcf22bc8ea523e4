// SPDX-License-Identifier: GPL-3.0-or-later
// Apps for cooking, sport and journeys.
#include "sample/themes_english.h"

namespace veltrix::sample
{

namespace
{

constexpr QStringView recipesNames[] = {
    u"{}: Recipes & Meal Planner", u"Recipe Keeper – {}",         u"{} Easy Dinner Recipes",
    u"Meal Prep Planner: {}",      u"{}: Cooking for Two",        u"Vegan Recipes: {}",
    u"{} Baking Recipes & Cakes",  u"Grocery List & Recipes: {}", u"{}: Keto Recipes",
    u"Air Fryer Recipes – {}",     u"{} Cocktail Recipes",        u"Family Cookbook: {}",
    u"{}: Sourdough Timer",        u"Slow Cooker Recipes: {}",    u"{}: What’s in My Fridge",
    u"Kitchen Timer & Units: {}",
};

constexpr QStringView recipesTopics[] = {
    u"recipes, cooking, easy recipes, dinner ideas",
    u"meal planner, meal prep, weekly menu, diet plan",
    u"recipe keeper, cookbook, recipe organizer",
    u"grocery list, shopping list, pantry, fridge",
    u"vegan recipes, vegetarian, keto, low carb, healthy",
    u"baking, cakes, bread, sourdough, desserts",
    u"air fryer, slow cooker, cocktail, kitchen timer",
};

constexpr QStringView runningNames[] = {
    u"{}: Running & Walking Tracker",
    u"Run Tracker – {} GPS",
    u"{} 5K Running for Beginners",
    u"Running Coach: {}",
    u"{}: Step Counter",
    u"Half Marathon Training: {}",
    u"{} Interval Timer",
    u"Trail Running Maps – {}",
    u"{}: Walking for Weight Loss",
    u"Treadmill Workouts: {}",
    u"{} Running Music by Pace",
    u"Marathon Pace Calculator: {}",
    u"{}: Home Workout & Fitness",
    u"Cadence Metronome: {}",
    u"{} Cycling & Running Log",
    u"Start Running – {}",
};

constexpr QStringView runningTopics[] = {
    u"running, run tracker, running app, gps run",
    u"walking, step counter, pedometer, steps",
    u"marathon training, half marathon, running coach, running plan",
    u"interval timer, workout timer, circuits",
    u"home workout, fitness, weight loss, training",
    u"trail, hiking, cycling, maps, elevation",
    u"pace calculator, cadence, running music, treadmill",
};

constexpr QStringView travelNames[] = {
    u"{}: Trip Planner",  u"Cheap Flights & Hotels: {}", u"{} Offline Maps",
    u"Packing List – {}", u"{}: Road Trip Planner",      u"Travel Translator & Guide: {}",
    u"{} Night Trains",   u"Currency Converter: {}",
};

constexpr QStringView travelTopics[] = {
    u"trip planner, travel planner, itinerary, vacation",
    u"flights, hotels, cheap flights, trains",
    u"offline maps, navigation, road trip, guide",
    u"packing list, currency converter, time zones",
};

} // namespace

Theme recipesTheme()
{
    return {.id = ThemeId::Recipes,
            .primary = Genre::FoodAndDrink,
            .secondary = Genre::Lifestyle,
            .glyph = Glyph::Pot,
            .topRatings = 5.3,
            .paidShare = 0.15,
            .names = recipesNames,
            .topics = recipesTopics};
}

Theme runningTheme()
{
    return {.id = ThemeId::Running,
            .primary = Genre::HealthAndFitness,
            .secondary = Genre::Lifestyle,
            .glyph = Glyph::Stride,
            .topRatings = 5.8,
            .paidShare = 0.08,
            .names = runningNames,
            .topics = runningTopics};
}

Theme travelTheme()
{
    return {.id = ThemeId::Travel,
            .primary = Genre::Travel,
            .secondary = Genre::Utilities,
            .glyph = Glyph::Compass,
            .topRatings = 5.6,
            .paidShare = 0.06,
            .names = travelNames,
            .topics = travelTopics};
}

} // namespace veltrix::sample
