# Sources of host/sheet.
target_sources(goodsbookhost PRIVATE
)
