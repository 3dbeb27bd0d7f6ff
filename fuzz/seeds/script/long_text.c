void OnStart() {}
[a """ b "
""