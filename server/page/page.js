"use strict";

async function showLocale() {
    const response = await fetch("api/resolve");
    const answer = await response.json();
    document.getElementById("locale").textContent = answer.locale;
}

showLocale();
