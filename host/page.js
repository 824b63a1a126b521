for (const compare of document.querySelectorAll(".compare")) {
  const divider = compare.querySelector("input");
  const place = () => compare.style.setProperty("--split", divider.value + "%");
  divider.addEventListener("input", place);
  // A reloaded page keeps where its dividers stood.
  place();
}
